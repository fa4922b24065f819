#pragma once

#include "Numbers.h"
#include "SaxHandler.h"

#include <cstring>
#include <string_view>

namespace citygml {

// The attributes of one start tag, found by local name and namespace.
class AttributeList {
public:
    enum class Ns { None, Gml, Xlink };

    AttributeList(XmlAttribute const* attributes, int count)
        : m_attributes(attributes), m_count(count) {}

    XmlAttribute const* find(char const* name, Ns ns) const {
        for (int i = 0; i < m_count; ++i) {
            XmlAttribute const& a = m_attributes[i];
            if (std::strcmp(a.localName, name) != 0)
                continue;
            if ((ns == Ns::None && !a.uri) || (ns == Ns::Gml && isGml(a.uri)) ||
                (ns == Ns::Xlink && a.uri &&
                 std::strcmp(a.uri, "http://www.w3.org/1999/xlink") == 0))
                return &a;
        }
        return nullptr;
    }
    // Empty when absent.
    std::string_view value(char const* name, Ns ns) const {
        XmlAttribute const* a = find(name, ns);
        return a ? text(*a) : std::string_view();
    }

    static std::string_view text(XmlAttribute const& a) {
        return {a.valueBegin, static_cast<std::size_t>(a.valueEnd - a.valueBegin)};
    }
    static bool isGml(char const* uri) {
        return uri && (std::strcmp(uri, "http://www.opengis.net/gml") == 0 ||
                       std::strcmp(uri, "http://www.opengis.net/gml/3.2") == 0);
    }
    // The id a reference names: "#id", "file.gml#id" and "id" all give "id".
    static std::string_view referencedId(std::string_view reference) {
        reference = Numbers::trim(reference);
        if (auto hash = reference.find('#'); hash != std::string_view::npos)
            reference.remove_prefix(hash + 1);
        return reference;
    }

private:
    XmlAttribute const* m_attributes;
    int m_count;
};

} // namespace citygml
