#include "gml/BridgeTypeNode.h"

#include "gml/XmlWriter.h"
#include "gml/internal/ChildOrdering.h"

#include <iterator>

namespace gml {

namespace {

// The element sequence of a CityGML 2.0 bridge.
wchar_t const* const bridgeRanks[] = {L"brid:class",
                                      L"brid:function",
                                      L"brid:usage",
                                      L"brid:yearOfConstruction",
                                      L"brid:yearOfDemolition",
                                      L"brid:isMovable",
                                      L"brid:lod1Solid",
                                      L"brid:lod1MultiSurface",
                                      L"brid:lod1TerrainIntersection",
                                      L"brid:lod2Solid",
                                      L"brid:lod2MultiSurface",
                                      L"brid:lod2MultiCurve",
                                      L"brid:lod2TerrainIntersection",
                                      L"brid:outerBridgeConstruction",
                                      L"brid:outerBridgeInstallation",
                                      L"brid:interiorBridgeInstallation",
                                      L"brid:boundedBy",
                                      L"brid:lod3Solid",
                                      L"brid:lod3MultiSurface",
                                      L"brid:lod3MultiCurve",
                                      L"brid:lod3TerrainIntersection",
                                      L"brid:lod4Solid",
                                      L"brid:lod4MultiSurface",
                                      L"brid:lod4MultiCurve",
                                      L"brid:lod4TerrainIntersection",
                                      L"brid:interiorBridgeRoom",
                                      L"brid:consistsOfBridgePart",
                                      L"brid:address"};

} // namespace

BridgeTypeNode::BridgeTypeNode(AttributeMap const& attributes, std::shared_ptr<Envelope> envelope,
                               std::wstring_view id, bool writeId, std::wstring_view tag)
    : RootNode(attributes, std::move(envelope), id, writeId, tag) {}

void BridgeTypeNode::sortChildren(XmlWriter& writer) {
    if (writer.version == 2)
        sortNodesByTable(children, bridgeRanks, std::size(bridgeRanks));
    else
        sortByGeneralRule(children, writer.version);
}

} // namespace gml
