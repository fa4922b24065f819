#include <citygml/TextureCoordinates.h>

namespace citygml {

TextureCoordinates::TextureCoordinates(std::string id, std::string targetRingId)
    : OwnedId(std::move(id)), Object(m_ownedId), m_targetRingId(std::move(targetRingId)) {}

} // namespace citygml
