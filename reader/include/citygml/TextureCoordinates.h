#pragma once

#include <citygml/Object.h>
#include <citygml/TVec2.h>

#include <cstddef>
#include <string_view>
#include <vector>

namespace citygml {

// The texture coordinates of one ring, as listed in app:textureCoordinates.
class TextureCoordinates : public Object {
public:
    // `id`, `targetRingId` and `coords` live in the model's storage.
    TextureCoordinates(std::string_view id, std::string_view targetRingId, TVec2f const* coords,
                       std::size_t count);

    std::string_view getTargetLinearRingID() const { return m_targetRingId; }
    // A copy of the pairs; the model keeps them in its storage.
    std::vector<TVec2f> getCoords() const { return {m_coords, m_coords + m_count}; }
    std::size_t size() const { return m_count; }

private:
    std::string_view m_targetRingId;
    TVec2f const* m_coords;
    std::size_t m_count;
};

} // namespace citygml
