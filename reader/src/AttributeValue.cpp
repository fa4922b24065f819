#include <citygml/AttributeValue.h>

#include <charconv>

namespace citygml {

namespace {

// Attribute texts come with surrounding whitespace often enough to tolerate it.
std::string_view trimmed(std::string const& s) {
    auto b = s.find_first_not_of(" \t\r\n");
    if (b == std::string::npos)
        return {};
    auto e = s.find_last_not_of(" \t\r\n");
    return std::string_view(s).substr(b, e - b + 1);
}

} // namespace

AttributeValue::AttributeValue(std::string value, AttributeType type)
    : m_type(type), m_value(std::move(value)) {}

double AttributeValue::asDouble(double defaultValue) const {
    auto t = trimmed(m_value);
    if (!t.empty() && t.front() == '+')
        t.remove_prefix(1);
    double v = 0;
    auto [p, ec] = std::from_chars(t.data(), t.data() + t.size(), v);
    if (ec != std::errc() || p != t.data() + t.size() || t.empty())
        return defaultValue;
    return v;
}

int AttributeValue::asInteger(int defaultValue) const {
    auto t = trimmed(m_value);
    if (!t.empty() && t.front() == '+')
        t.remove_prefix(1);
    int v = 0;
    auto [p, ec] = std::from_chars(t.data(), t.data() + t.size(), v);
    if (ec != std::errc() || p != t.data() + t.size() || t.empty())
        return defaultValue;
    return v;
}

} // namespace citygml
