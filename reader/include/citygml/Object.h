#pragma once

#include <citygml/AttributeValue.h>

#include <string>

namespace citygml {

class ModelBuilder;

// Anything with an identifier and attributes. Objects without gml:id carry a generated id that
// starts with "__kolt_" plus a character no XML name can hold, so it never collides.
class Object {
public:
    explicit Object(std::string id);
    virtual ~Object() = default;

    std::string const& getId() const { return m_id; }
    AttributesMap const& getAttributes() const { return m_attributes; }
    // Null when the attribute is absent.
    AttributeValue const* getAttribute(std::string const& name) const;
    bool hasGeneratedId() const;

protected:
    friend class ModelBuilder;
    std::string m_id;
    AttributesMap m_attributes;
};

} // namespace citygml
