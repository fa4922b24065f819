#include <citygml/TextureCoordinates.h>

namespace citygml {

TextureCoordinates::TextureCoordinates(std::string_view id, std::string_view targetRingId,
                                       TVec2f const* coords, std::size_t count)
    : Object(id), m_targetRingId(targetRingId), m_coords(coords), m_count(count) {}

} // namespace citygml
