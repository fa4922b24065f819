#pragma once

#include "../ObjectArena.h"

#include <citygml/AttributeValue.h>
#include <citygml/Object.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace citygml {

// Reads generic attributes of every CityGML version: the name as an attribute or a gen:name
// child, the value in gen:value. Sets only group their members, which land on the owner.
class GenericAttributeCollector {
public:
    explicit GenericAttributeCollector(ObjectArena& store) : m_store(store) {}

    // `depth` is the element's depth in the document.
    void start(AttributeType type, bool isSet, std::size_t depth, std::string_view name);
    // Whether an element at `depth` is a name or value of the innermost attribute.
    bool ownsChildAt(std::size_t depth) const {
        return !m_open.empty() && m_open.back().depth + 1 == depth;
    }
    void name(std::string_view text);
    void value(std::string_view text);
    void end(Object& owner);

private:
    struct Open {
        std::string name;
        std::string value;
        AttributeType type = AttributeType::String;
        bool isSet = false;
        std::size_t depth = 0;
    };
    ObjectArena& m_store;
    std::vector<Open> m_open;
};

} // namespace citygml
