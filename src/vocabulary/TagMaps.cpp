#include "vocabulary/TagMaps.h"

#include <cwctype>
#include <initializer_list>
#include <utility>

namespace {

using Row = std::pair<wchar_t const*, wchar_t const*>;

// Most rows are keyed by their value in lower case; the few that are not are given as pairs.
TagMap buildMap(std::initializer_list<wchar_t const*> values, std::initializer_list<Row> odd) {
    TagMap map;
    for (wchar_t const* value : values) {
        std::wstring key(value);
        for (wchar_t& c : key)
            c = static_cast<wchar_t>(std::towlower(static_cast<wint_t>(c)));
        map.emplace(std::move(key), value);
    }
    for (Row const& row : odd)
        map.emplace(row.first, row.second);
    return map;
}

} // namespace

TagMap const CityGML2Tags = buildMap(
    {
        // gen
        L"gen:GenericCityObject",
        L"gen:lod0Geometry",
        L"gen:lod1Geometry",
        L"gen:lod2Geometry",
        L"gen:lod3Geometry",
        L"gen:lod4Geometry",
        L"gen:lod0TerrainIntersection",
        L"gen:lod1TerrainIntersection",
        L"gen:lod2TerrainIntersection",
        L"gen:lod3TerrainIntersection",
        L"gen:lod4TerrainIntersection",
        L"gen:lod0ImplicitRepresentation",
        L"gen:lod1ImplicitRepresentation",
        L"gen:lod2ImplicitRepresentation",
        L"gen:lod3ImplicitRepresentation",
        L"gen:lod4ImplicitRepresentation",
        // bldg
        L"bldg:Building",
        L"bldg:BuildingPart",
        L"bldg:Room",
        L"bldg:BuildingInstallation",
        L"bldg:BuildingFurniture",
        L"bldg:BuildingConstructiveElement",
        L"bldg:BuildingRoom",
        L"bldg:Door",
        L"bldg:Window",
        L"bldg:CityFurniture",
        L"bldg:Storey",
        L"bldg:buildingSubdivision",
        L"bldg:outerBuildingInstallation",
        L"bldg:IntBuildingInstallation",
        L"bldg:consistsOfBuildingPart",
        L"bldg:lod0RoofEdge",
        L"bldg:lod0FootPrint",
        L"bldg:boundedBy",
        L"bldg:lod1MultiSurface",
        L"bldg:lod1TerrainIntersection",
        L"bldg:lod2Solid",
        L"bldg:lod2MultiSurface",
        L"bldg:lod2MultiCurve",
        L"bldg:lod2TerrainIntersection",
        L"bldg:lod3Solid",
        L"bldg:lod3MultiSurface",
        L"bldg:lod3MultiCurve",
        L"bldg:lod3TerrainIntersection",
        L"bldg:lod4Solid",
        L"bldg:lod4MultiSurface",
        L"bldg:lod4MultiCurve",
        L"bldg:lod4TerrainIntersection",
        L"bldg:lod1Geometry",
        L"bldg:lod2Geometry",
        L"bldg:lod3Geometry",
        L"bldg:lod4Geometry",
        L"bldg:lod2ImplicitRepresentation",
        L"bldg:lod3ImplicitRepresentation",
        L"bldg:lod4ImplicitRepresentation",
        L"bldg:WallSurface",
        L"bldg:RoofSurface",
        L"bldg:GroundSurface",
        L"bldg:ClosureSurface",
        L"bldg:FloorSurface",
        L"bldg:InteriorWallSurface",
        L"bldg:CeilingSurface",
        L"bldg:OuterCeilingSurface",
        L"bldg:OuterFloorSurface",
        // frn
        L"frn:CityFurniture",
        // trans
        L"trans:TransportationComplex",
        L"trans:TrafficArea",
        L"trans:AuxiliaryTrafficArea",
        L"trans:Track",
        L"trans:Road",
        L"trans:Railway",
        L"trans:Square",
        L"trans:function",
        L"trans:surfaceMaterial",
        L"trans:lod0Network",
        // veg
        L"veg:PlantCover",
        L"veg:SolitaryVegetationObject",
        // wtr
        L"wtr:WaterBody",
        L"wtr:boundedBy",
        // luse
        L"luse:LandUse",
        // brid
        L"brid:Bridge",
        L"brid:BridgeConstructionElement",
        L"brid:BridgeInstallation",
        L"brid:BridgePart",
        L"brid:boundedBy",
        L"brid:outerBridgeConstruction",
        L"brid:outerBridgeInstallation",
        L"brid:lod1Geometry",
        L"brid:lod2Geometry",
        L"brid:lod3Geometry",
        L"brid:lod4Geometry",
        L"brid:WallSurface",
        L"brid:RoofSurface",
        L"brid:GroundSurface",
        L"brid:ClosureSurface",
        L"brid:FloorSurface",
        L"brid:InteriorWallSurface",
        L"brid:CeilingSurface",
        L"brid:OuterCeilingSurface",
        L"brid:OuterFloorSurface",
        // grp
        L"grp:CityObjectGroup",
        // dem
        L"dem:ReliefFeature",
        L"dem:reliefComponent",
        L"dem:TINRelief",
        L"dem:MassPointRelief",
        L"dem:BreakLineRelief",
        L"dem:RasterRelief",
    },
    {
        // Kept as they have always been: files written earlier depend on these spellings.
        {L"bldg:lod1Solid", L"bldg:lod1Solid"},
        {L"trans:transportationobject", L"trans:TrafficArea"},
        {L"sub:tunnel", L"tun:Tunnel"},
    });

TagMap const CityGML3Tags = buildMap(
    {
        // gen
        L"gen:GenericOccupiedSpace",
        L"gen:GenericUnoccupiedSpace",
        L"gen:GenericLogicalSpace",
        L"gen:GenericThematicSurface",
        // bldg
        L"bldg:BuildingConstructiveElement",
        // core
        L"core:PointCloud",
        L"core:boundary",
        L"core:lod0Point",
        L"core:lod0MultiCurve",
        L"core:lod0MultiSurface",
        L"core:lod1Solid",
        L"core:lod2Solid",
        L"core:lod2MultiSurface",
        L"core:lod2MultiCurve",
        L"core:lod3Solid",
        L"core:lod3MultiSurface",
        L"core:lod3MultiCurve",
        // trans
        L"trans:TrafficSpace",
        L"trans:AuxiliaryTrafficSpace",
        L"trans:Intersection",
        L"trans:Section",
        L"trans:Waterway",
        L"trans:Granularity",
        // con
        L"con:WallSurface",
        L"con:RoofSurface",
        L"con:GroundSurface",
        L"con:ClosureSurface",
        L"con:FloorSurface",
        L"con:InteriorWallSurface",
        L"con:CeilingSurface",
        L"con:OuterCeilingSurface",
        L"con:OuterFloorSurface",
        L"con:OtherConstruction",
        L"con:fillingSurface",
        L"con:WindowSurface",
        L"con:DoorSurface",
    },
    {
        {L"core:closuresurface", L"ClosureSurface"},
    });
