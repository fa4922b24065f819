#include <citygml/Appearance.h>

namespace citygml {

Appearance::Appearance(std::string id, std::string typeName)
    : OwnedId(std::move(id)), Object(m_ownedId), m_type(std::move(typeName)) {}

} // namespace citygml
