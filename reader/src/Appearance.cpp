#include <citygml/Appearance.h>

namespace citygml {

Appearance::Appearance(std::string id, std::string typeName)
    : Object(std::move(id)), m_type(std::move(typeName)) {}

} // namespace citygml
