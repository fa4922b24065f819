#include <citygml/Object.h>

namespace citygml {

AttributesMap const& Object::getAttributes() const {
    static AttributesMap const none;
    return m_attributes ? *m_attributes : none;
}

AttributeValue const* Object::getAttribute(std::string const& name) const {
    if (!m_attributes)
        return nullptr;
    auto it = m_attributes->find(name);
    return it == m_attributes->end() ? nullptr : &it->second;
}

bool Object::hasGeneratedId() const {
    return m_id.compare(0, 8, "__kolt_ ") == 0;
}

} // namespace citygml
