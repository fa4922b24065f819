#include <citygml/Object.h>

namespace citygml {

AttributeValue const* Object::getAttribute(std::string const& name) const {
    auto it = m_attributes.find(name);
    return it == m_attributes.end() ? nullptr : &it->second;
}

bool Object::hasGeneratedId() const {
    return m_id.compare(0, 8, "__kolt_ ") == 0;
}

} // namespace citygml
