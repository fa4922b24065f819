#include "gml/BuildingTypeNode.h"

#include "gml/XmlWriter.h"
#include "gml/internal/ChildOrdering.h"

#include <iterator>

namespace gml {

namespace {

// The element sequence of a CityGML 2.0 building.
wchar_t const* const buildingRanks[] = {L"bldg:class",
                                        L"bldg:function",
                                        L"bldg:usage",
                                        L"bldg:yearOfConstruction",
                                        L"bldg:yearOfDemolition",
                                        L"bldg:roofType",
                                        L"bldg:measuredHeight",
                                        L"bldg:storeysAboveGround",
                                        L"bldg:storeysBelowGround",
                                        L"bldg:storeyHeightsAboveGround",
                                        L"bldg:storeyHeightsBelowGround",
                                        L"bldg:lod0FootPrint",
                                        L"bldg:lod0RoofEdge",
                                        L"bldg:lod1Solid",
                                        L"bldg:lod1MultiSurface",
                                        L"bldg:lod1TerrainIntersection",
                                        L"bldg:lod2Solid",
                                        L"bldg:lod2MultiSurface",
                                        L"bldg:lod2MultiCurve",
                                        L"bldg:lod2TerrainIntersection",
                                        L"bldg:outerBuildingInstallation",
                                        L"bldg:interiorBuildingInstallation",
                                        L"bldg:boundedBy",
                                        L"bldg:lod3Solid",
                                        L"bldg:lod3MultiSurface",
                                        L"bldg:lod3MultiCurve",
                                        L"bldg:lod3TerrainIntersection",
                                        L"bldg:lod4Solid",
                                        L"bldg:lod4MultiSurface",
                                        L"bldg:lod4MultiCurve",
                                        L"bldg:lod4TerrainIntersection",
                                        L"bldg:interiorRoom",
                                        L"bldg:consistsOfBuildingPart",
                                        L"bldg:address"};

} // namespace

BuildingTypeNode::BuildingTypeNode(AttributeMap const& attributes,
                                   std::shared_ptr<Envelope> envelope, std::wstring_view id,
                                   bool writeId, std::wstring_view tag)
    : RootNode(attributes, std::move(envelope), id, writeId, tag) {}

void BuildingTypeNode::sortChildren(XmlWriter& writer) {
    if (writer.version == 2)
        sortNodesByTable(children, buildingRanks, std::size(buildingRanks));
    else
        sortByGeneralRule(children, writer.version);
}

} // namespace gml
