#include "ElementTable.h"

#include <utility>

namespace citygml {

namespace {

using Sym = ElementSym;

std::string lower(std::string_view s) {
    std::string out(s);
    for (char& c : out)
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    return out;
}

Sym appSym(std::string_view n) {
    static constexpr std::pair<std::string_view, Sym> rows[] = {
        {"Appearance", Sym::Appearance},
        {"theme", Sym::Theme},
        {"surfaceDataMember", Sym::SurfaceDataMember},
        {"surfaceData", Sym::SurfaceDataMember},
        {"X3DMaterial", Sym::X3DMaterial},
        {"ParameterizedTexture", Sym::ParameterizedTexture},
        {"GeoreferencedTexture", Sym::GeoreferencedTexture},
        {"imageURI", Sym::ImageUri},
        {"mimeType", Sym::MimeType},
        {"wrapMode", Sym::WrapMode},
        {"isFront", Sym::IsFront},
        {"target", Sym::Target},
        {"textureCoordinates", Sym::TextureCoordinates},
        {"TextureAssociation", Sym::TextureAssociation},
        {"diffuseColor", Sym::DiffuseColor},
        {"emissiveColor", Sym::EmissiveColor},
        {"specularColor", Sym::SpecularColor},
        {"ambientIntensity", Sym::AmbientIntensity},
        {"shininess", Sym::Shininess},
        {"transparency", Sym::Transparency},
        {"isSmooth", Sym::IsSmooth},
    };
    for (auto const& [name, sym] : rows)
        if (name == n)
            return sym;
    return Sym::None;
}

Sym gmlSym(std::string_view n) {
    static constexpr std::pair<std::string_view, Sym> rows[] = {
        {"LinearRing", Sym::LinearRing},    {"exterior", Sym::Exterior},
        {"outerBoundaryIs", Sym::Exterior}, {"interior", Sym::Interior},
        {"innerBoundaryIs", Sym::Interior}, {"pos", Sym::Pos},
        {"posList", Sym::PosList},          {"coordinates", Sym::Coordinates},
        {"boundedBy", Sym::BoundedBy},      {"Envelope", Sym::Envelope},
        {"lowerCorner", Sym::LowerCorner},  {"upperCorner", Sym::UpperCorner},
    };
    for (auto const& [name, sym] : rows)
        if (name == n)
            return sym;
    if (Vocabulary::isPolygon(n))
        return Sym::Polygon;
    if (Vocabulary::geometryType(n) != Geometry::GeometryType::GT_Unknown)
        return Sym::Geometry;
    return Sym::None;
}

Sym genSym(std::string_view n, AttributeType& type) {
    std::string l = lower(n);
    if (l == "genericattributeset") {
        type = AttributeType::String;
        return Sym::GenericSet;
    }
    if (l == "name")
        return Sym::GenericName;
    if (l == "value")
        return Sym::GenericValue;
    static constexpr std::pair<std::string_view, AttributeType> rows[] = {
        {"stringattribute", AttributeType::String}, {"intattribute", AttributeType::Integer},
        {"doubleattribute", AttributeType::Double}, {"measureattribute", AttributeType::Double},
        {"dateattribute", AttributeType::Date},     {"uriattribute", AttributeType::Uri},
        {"codeattribute", AttributeType::String},
    };
    for (auto const& [name, t] : rows)
        if (name == l) {
            type = t;
            return Sym::GenericAttribute;
        }
    return Sym::None;
}

} // namespace

ElementInfo const& ElementTable::lookup(char const* localName, char const* prefix,
                                        char const* uri) {
    Key key{localName, prefix, uri};
    auto it = m_infos.find(key);
    if (it != m_infos.end())
        return *it->second;
    return *(m_infos[key] = describe(localName, prefix, uri));
}

std::unique_ptr<ElementInfo> ElementTable::describe(char const* localName, char const* prefix,
                                                    char const* uri) {
    auto info = std::make_unique<ElementInfo>();
    info->localName = localName;
    info->prefix = prefix ? prefix : "";
    info->uri = uri ? uri : "";
    info->ns = Vocabulary::namespaceInfo(info->uri);
    std::string_view name(info->localName);
    if (info->ns.prefix)
        info->tag = std::string(info->ns.prefix) + ":" + lower(name);
    else if (prefix)
        info->tag = lower(prefix) + ":" + lower(name);
    else
        info->tag = lower(name);
    if (name.size() > 3 && name.compare(0, 3, "lod") == 0 && name[3] >= '0' && name[3] <= '4')
        info->lod = static_cast<signed char>(name[3] - '0');

    Module m = info->ns.module;
    constexpr std::string_view implicitProperty = "ImplicitRepresentation";
    if ((name.size() >= implicitProperty.size() &&
         name.substr(name.size() - implicitProperty.size()) == implicitProperty) ||
        name == "ImplicitGeometry")
        info->sym = Sym::Implicit;
    else if (m == Module::Gml) {
        info->sym = gmlSym(name);
        if (info->sym == Sym::Geometry) {
            info->geometryType = Vocabulary::geometryType(name);
            info->internedTag = Vocabulary::internTag(info->tag);
        } else if (info->sym == Sym::Polygon) {
            info->internedTag = Vocabulary::internTag(info->tag);
        }
    } else if (m == Module::App) {
        info->sym = appSym(name);
    } else if (m == Module::Core && name == "CityModel") {
        info->sym = Sym::CityModel;
    } else if (m == Module::Gen && genSym(name, info->attributeType) != Sym::None) {
        info->sym = genSym(name, info->attributeType);
    } else if (m == Module::Dem && name == "lod") {
        info->sym = Sym::DemLod;
    } else if ((info->objectType = Vocabulary::cityObjectType(m, name)) !=
               CityObject::CityObjectsType::COT_Unknown) {
        info->sym = Sym::CityObject;
        info->internedTag = Vocabulary::internTag(info->tag);
    }
    return info;
}

} // namespace citygml
