#pragma once

#include <citygml/CityObject.h>
#include <citygml/Geometry.h>

#include <string>
#include <string_view>

namespace citygml {

// Modules an element can belong to, found from its namespace URI alone.
enum class Module : unsigned char {
    Other,
    Core,
    App,
    Bldg,
    Brid,
    Tun,
    Trans,
    Veg,
    Wtr,
    Luse,
    Dem,
    Frn,
    Grp,
    Gen,
    Tex,
    Con,
    Pcl,
    Dyn,
    Vers,
    Gml,
    Xal,
    Xlink
};

struct NamespaceInfo {
    Module module = Module::Other;
    int version = 0;              // CityGML 1, 2 or 3 for CityGML modules, else 0
    char const* prefix = nullptr; // canonical prefix, null for unknown namespaces
};

// Tables mapping names to the reader's notions.
class Vocabulary {
public:
    static NamespaceInfo namespaceInfo(std::string_view uri);
    // City object class of a thematic feature element; COT_Unknown if it is none.
    static CityObject::CityObjectsType cityObjectType(Module module, std::string_view localName);
    // Geometry aggregate type of a GML element; GT_Unknown if it is none.
    static Geometry::GeometryType geometryType(std::string_view localName);
    static bool isPolygon(std::string_view localName);
    // Canonical lower-case tag stored once for the process, e.g. "gml:multisurface".
    static std::string const* internTag(std::string const& tag);
};

} // namespace citygml
