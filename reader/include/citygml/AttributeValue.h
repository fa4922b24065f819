#pragma once

#include <map>
#include <string>

namespace citygml {

enum class AttributeType { String = 0, Double = 1, Integer = 2, Date = 3, Uri = 4 };

// One attribute: its text as it stood in the document plus the declared type.
class AttributeValue {
public:
    AttributeValue() = default;
    AttributeValue(std::string value, AttributeType type = AttributeType::String);

    AttributeType getType() const { return m_type; }
    std::string const& asString() const { return m_value; }
    // The numeric readings give the default when the text is not a complete number.
    double asDouble(double defaultValue = 0.0) const;
    int asInteger(int defaultValue = 0) const;

    bool operator==(AttributeValue const& o) const {
        return m_type == o.m_type && m_value == o.m_value;
    }

private:
    AttributeType m_type = AttributeType::String;
    std::string m_value;
};

using AttributesMap = std::map<std::string, AttributeValue>;

} // namespace citygml
