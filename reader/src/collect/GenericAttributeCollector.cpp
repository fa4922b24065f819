#include "GenericAttributeCollector.h"

#include "../Access.h"
#include "../Numbers.h"

namespace citygml {

void GenericAttributeCollector::start(AttributeType type, bool isSet, std::size_t depth,
                                      std::string_view name) {
    m_open.push_back({std::string(name), {}, type, isSet, depth});
}

void GenericAttributeCollector::name(std::string_view text) {
    if (!m_open.empty())
        m_open.back().name = std::string(Numbers::trim(text));
}

void GenericAttributeCollector::value(std::string_view text) {
    if (!m_open.empty())
        m_open.back().value = std::string(Numbers::trim(text));
}

void GenericAttributeCollector::end(Object& owner) {
    if (m_open.empty())
        return;
    Open g = std::move(m_open.back());
    m_open.pop_back();
    if (g.isSet || g.name.empty())
        return;
    detail::Access::attributes(owner, m_store)[g.name] = AttributeValue(std::move(g.value), g.type);
}

} // namespace citygml
