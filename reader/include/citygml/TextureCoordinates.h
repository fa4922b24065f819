#pragma once

#include <citygml/Object.h>
#include <citygml/TVec2.h>

#include <string>
#include <vector>

namespace citygml {

// The texture coordinates of one ring, as listed in app:textureCoordinates.
class TextureCoordinates : private OwnedId, public Object {
public:
    TextureCoordinates(std::string id, std::string targetRingId);

    std::string const& getTargetLinearRingID() const { return m_targetRingId; }
    std::vector<TVec2f> const& getCoords() const { return m_coords; }

private:
    friend class ModelBuilder;
    std::string m_targetRingId;
    std::vector<TVec2f> m_coords;
};

} // namespace citygml
