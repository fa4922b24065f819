#pragma once

#include <citygml/AppearanceTargetDefinition.h>
#include <citygml/Texture.h>
#include <citygml/TextureCoordinates.h>

#include <memory>
#include <vector>

namespace citygml {

class TextureTargetDefinition : public AppearanceTargetDefinition<Texture> {
public:
    TextureTargetDefinition(std::string targetId, std::shared_ptr<Texture> texture, std::string id);

    // Coordinates for the ring with this id (with or without a leading '#'); null if none.
    std::shared_ptr<TextureCoordinates> getTextureCoordinatesForID(std::string_view ringId) const;
    unsigned int getTextureCoordinatesCount() const {
        return static_cast<unsigned int>(m_coords.size());
    }
    std::shared_ptr<TextureCoordinates> getTextureCoordinates(unsigned int i) const {
        return m_coords.at(i);
    }

private:
    friend class ModelBuilder;
    std::vector<std::shared_ptr<TextureCoordinates>> m_coords;
};

} // namespace citygml
