#include "Vocabulary.h"

#include <mutex>
#include <unordered_map>
#include <unordered_set>

namespace citygml {

namespace {

using COT = CityObject::CityObjectsType;
using GT = Geometry::GeometryType;

struct ModuleRow {
    std::string_view name;
    Module module;
    char const* prefix;
};

// Path segment after "http://www.opengis.net/citygml/" names the module.
constexpr ModuleRow ModuleRows[] = {
    {"", Module::Core, "core"},
    {"appearance", Module::App, "app"},
    {"building", Module::Bldg, "bldg"},
    {"bridge", Module::Brid, "brid"},
    {"tunnel", Module::Tun, "sub"},
    {"transportation", Module::Trans, "trans"},
    {"vegetation", Module::Veg, "veg"},
    {"waterbody", Module::Wtr, "wtr"},
    {"landuse", Module::Luse, "luse"},
    {"relief", Module::Dem, "dem"},
    {"cityfurniture", Module::Frn, "frn"},
    {"cityobjectgroup", Module::Grp, "grp"},
    {"generics", Module::Gen, "gen"},
    {"texturedsurface", Module::Tex, "tex"},
    {"construction", Module::Con, "con"},
    {"pointcloud", Module::Pcl, "pcl"},
    {"dynamizer", Module::Dyn, "dyn"},
    {"versioning", Module::Vers, "vers"},
};

struct FeatureRow {
    std::string_view name;
    COT type;
};

// Concrete feature types of CityGML 1.0, 2.0 and 3.0 in one table.
constexpr FeatureRow FeatureRows[] = {
    {"Building", COT::COT_Building},
    {"BuildingPart", COT::COT_BuildingPart},
    {"Room", COT::COT_Room},
    {"BuildingRoom", COT::COT_Room},
    {"BuildingInstallation", COT::COT_BuildingInstallation},
    {"IntBuildingInstallation", COT::COT_BuildingInstallation},
    {"BuildingFurniture", COT::COT_BuildingFurniture},
    {"BuildingConstructiveElement", COT::COT_BuildingConstructiveElement},
    {"BuildingUnit", COT::COT_BuildingUnit},
    {"Storey", COT::COT_Storey},
    {"Door", COT::COT_Door},
    {"Window", COT::COT_Window},
    {"WallSurface", COT::COT_BoundarySurface},
    {"RoofSurface", COT::COT_BoundarySurface},
    {"GroundSurface", COT::COT_BoundarySurface},
    {"ClosureSurface", COT::COT_BoundarySurface},
    {"FloorSurface", COT::COT_BoundarySurface},
    {"InteriorWallSurface", COT::COT_BoundarySurface},
    {"CeilingSurface", COT::COT_BoundarySurface},
    {"OuterCeilingSurface", COT::COT_BoundarySurface},
    {"OuterFloorSurface", COT::COT_BoundarySurface},
    {"WindowSurface", COT::COT_BoundarySurface},
    {"DoorSurface", COT::COT_BoundarySurface},
    {"OtherConstruction", COT::COT_OtherConstruction},
    {"CityFurniture", COT::COT_CityFurniture},
    {"GenericCityObject", COT::COT_GenericCityObject},
    {"GenericOccupiedSpace", COT::COT_GenericCityObject},
    {"GenericUnoccupiedSpace", COT::COT_GenericCityObject},
    {"GenericLogicalSpace", COT::COT_GenericCityObject},
    {"GenericThematicSurface", COT::COT_GenericCityObject},
    {"TransportationComplex", COT::COT_Transportation},
    {"Road", COT::COT_Transportation},
    {"Track", COT::COT_Transportation},
    {"Railway", COT::COT_Transportation},
    {"Square", COT::COT_Transportation},
    {"Waterway", COT::COT_Transportation},
    {"TrafficArea", COT::COT_Transportation},
    {"AuxiliaryTrafficArea", COT::COT_Transportation},
    {"TrafficSpace", COT::COT_Transportation},
    {"AuxiliaryTrafficSpace", COT::COT_Transportation},
    {"ClearanceSpace", COT::COT_Transportation},
    {"Intersection", COT::COT_Transportation},
    {"Section", COT::COT_Transportation},
    {"Hole", COT::COT_Transportation},
    {"HoleSurface", COT::COT_Transportation},
    {"Marking", COT::COT_Transportation},
    {"PlantCover", COT::COT_Vegetation},
    {"SolitaryVegetationObject", COT::COT_Vegetation},
    {"WaterBody", COT::COT_WaterBody},
    {"WaterSurface", COT::COT_WaterSurface},
    {"WaterGroundSurface", COT::COT_WaterSurface},
    {"WaterClosureSurface", COT::COT_WaterSurface},
    {"ReliefFeature", COT::COT_ReliefFeature},
    {"TINRelief", COT::COT_ReliefComponent},
    {"MassPointRelief", COT::COT_ReliefComponent},
    {"BreakLineRelief", COT::COT_ReliefComponent},
    {"RasterRelief", COT::COT_ReliefComponent},
    {"LandUse", COT::COT_LandUse},
    {"Tunnel", COT::COT_Tunnel},
    {"TunnelPart", COT::COT_Tunnel},
    {"TunnelInstallation", COT::COT_Tunnel},
    {"IntTunnelInstallation", COT::COT_Tunnel},
    {"TunnelFurniture", COT::COT_Tunnel},
    {"TunnelConstructiveElement", COT::COT_Tunnel},
    {"HollowSpace", COT::COT_Tunnel},
    {"Bridge", COT::COT_Bridge},
    {"BridgePart", COT::COT_Bridge},
    {"BridgeConstructionElement", COT::COT_Bridge},
    {"BridgeConstructiveElement", COT::COT_Bridge},
    {"BridgeInstallation", COT::COT_Bridge},
    {"IntBridgeInstallation", COT::COT_Bridge},
    {"BridgeFurniture", COT::COT_Bridge},
    {"BridgeRoom", COT::COT_Bridge},
    {"CityObjectGroup", COT::COT_CityObjectGroup},
    {"PointCloud", COT::COT_PointCloud},
};

struct GeometryRow {
    std::string_view name;
    GT type;
};

constexpr GeometryRow GeometryRows[] = {
    {"Solid", GT::GT_Solid},
    {"CompositeSolid", GT::GT_CompositeSolid},
    {"MultiSolid", GT::GT_MultiSolid},
    {"MultiSurface", GT::GT_MultiSurface},
    {"CompositeSurface", GT::GT_CompositeSurface},
    {"Shell", GT::GT_Shell},
    {"Surface", GT::GT_Surface},
    {"TriangulatedSurface", GT::GT_TriangulatedSurface},
    {"Tin", GT::GT_Tin},
    {"PolyhedralSurface", GT::GT_PolyhedralSurface},
    {"OrientableSurface", GT::GT_OrientableSurface},
    {"MultiGeometry", GT::GT_MultiGeometry},
    {"GeometricComplex", GT::GT_MultiGeometry},
    {"MultiCurve", GT::GT_MultiCurve},
    {"CompositeCurve", GT::GT_CompositeCurve},
    {"MultiPoint", GT::GT_MultiPoint},
};

bool hasModule(Module m) {
    switch (m) {
    case Module::Other:
    case Module::App:
    case Module::Gml:
    case Module::Xal:
    case Module::Xlink:
    case Module::Dyn:
    case Module::Vers:
    case Module::Tex:
        return false;
    default:
        return true;
    }
}

} // namespace

NamespaceInfo Vocabulary::namespaceInfo(std::string_view uri) {
    constexpr std::string_view CityGml = "http://www.opengis.net/citygml/";
    if (uri.substr(0, CityGml.size()) == CityGml) {
        std::string_view rest = uri.substr(CityGml.size());
        std::string_view module;
        std::string_view version = rest;
        if (auto slash = rest.find('/'); slash != std::string_view::npos) {
            module = rest.substr(0, slash);
            version = rest.substr(slash + 1);
        }
        int v = version == "1.0" ? 1 : version == "2.0" ? 2 : version == "3.0" ? 3 : 0;
        if (v == 0)
            return {};
        for (auto const& row : ModuleRows)
            if (row.name == module)
                return {row.module, v, row.prefix};
        return {};
    }
    if (uri == "http://www.opengis.net/gml" || uri == "http://www.opengis.net/gml/3.2")
        return {Module::Gml, 0, "gml"};
    if (uri == "http://www.w3.org/1999/xlink")
        return {Module::Xlink, 0, "xlink"};
    if (uri == "urn:oasis:names:tc:ciq:xsdschema:xAL:2.0" || uri == "urn:oasis:names:tc:ciq:xal:3")
        return {Module::Xal, 0, "xal"};
    return {};
}

CityObject::CityObjectsType Vocabulary::cityObjectType(Module module, std::string_view localName) {
    if (!hasModule(module))
        return COT::COT_Unknown;
    // Only core:ClosureSurface of 3.0 is a concrete feature of the core module.
    if (module == Module::Core && localName != "ClosureSurface")
        return COT::COT_Unknown;
    for (auto const& row : FeatureRows)
        if (row.name == localName)
            return row.type;
    return COT::COT_Unknown;
}

Geometry::GeometryType Vocabulary::geometryType(std::string_view localName) {
    for (auto const& row : GeometryRows)
        if (row.name == localName)
            return row.type;
    return GT::GT_Unknown;
}

bool Vocabulary::isPolygon(std::string_view localName) {
    return localName == "Polygon" || localName == "Triangle" || localName == "Rectangle" ||
           localName == "PolygonPatch";
}

std::string const* Vocabulary::internTag(std::string const& tag) {
    // Tags are few (one per element name), so the pool never needs shrinking.
    static std::mutex mutex;
    static std::unordered_set<std::string> pool;
    std::lock_guard<std::mutex> lock(mutex);
    return &*pool.insert(tag).first;
}

} // namespace citygml
