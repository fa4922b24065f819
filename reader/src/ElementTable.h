#pragma once

#include "ElementSym.h"
#include "Vocabulary.h"

#include <citygml/AttributeValue.h>

#include <memory>
#include <string>
#include <unordered_map>

namespace citygml {

// Everything the reader needs to know about one element name.
struct ElementInfo {
    std::string localName;
    std::string prefix;
    std::string uri;
    NamespaceInfo ns;
    std::string tag; // canonical prefix + ":" + lower-case local name
    std::string const* internedTag = nullptr;
    ElementSym sym = ElementSym::None;
    signed char lod = -1; // N of a "lodN..." property
    CityObject::CityObjectsType objectType = CityObject::CityObjectsType::COT_Unknown;
    Geometry::GeometryType geometryType = Geometry::GeometryType::GT_Unknown;
    AttributeType attributeType = AttributeType::String;
};

// Element names to what they mean, worked out on the first sight of each name in a parse.
class ElementTable {
public:
    // Names are the parser's interned strings: within one parse, equal addresses are equal names.
    ElementInfo const& lookup(char const* localName, char const* prefix, char const* uri);

private:
    struct Key {
        char const* localName;
        char const* prefix;
        char const* uri;
        bool operator==(Key const& o) const {
            return localName == o.localName && prefix == o.prefix && uri == o.uri;
        }
    };
    struct KeyHash {
        std::size_t operator()(Key const& k) const {
            std::hash<void const*> h;
            return (h(k.localName) * 31 + h(k.prefix)) * 31 + h(k.uri);
        }
    };
    static std::unique_ptr<ElementInfo> describe(char const* localName, char const* prefix,
                                                 char const* uri);

    std::unordered_map<Key, std::unique_ptr<ElementInfo>, KeyHash> m_infos;
};

} // namespace citygml
