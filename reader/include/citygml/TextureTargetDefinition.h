#pragma once

#include <citygml/AppearanceTargetDefinition.h>
#include <citygml/ObjectList.h>
#include <citygml/Texture.h>
#include <citygml/TextureCoordinates.h>

#include <memory>
#include <string_view>

namespace citygml {

namespace detail {
class Access; // the reader, which fills these fields while it reads a document
}

class TextureTargetDefinition : public AppearanceTargetDefinition<Texture> {
public:
    using AppearanceTargetDefinition<Texture>::AppearanceTargetDefinition;

    // Coordinates for the ring with this id (with or without a leading '#'); null if none.
    std::shared_ptr<TextureCoordinates> getTextureCoordinatesForID(std::string_view ringId) const;
    unsigned int getTextureCoordinatesCount() const {
        return static_cast<unsigned int>(m_coords.size());
    }
    std::shared_ptr<TextureCoordinates> getTextureCoordinates(unsigned int i) const;

private:
    friend class detail::Access;
    ObjectList<TextureCoordinates*> m_coords;
};

} // namespace citygml
