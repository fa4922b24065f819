#include <citygml/TextureCoordinates.h>

namespace citygml {

TextureCoordinates::TextureCoordinates(std::string id, std::string targetRingId)
    : Object(std::move(id)), m_targetRingId(std::move(targetRingId)) {}

} // namespace citygml
