#include "gml/TransportationTypeNode.h"

#include "gml/XmlWriter.h"
#include "gml/internal/ChildOrdering.h"

#include <iterator>

namespace gml {

namespace {

// The element sequence of a CityGML 2.0 transportation complex.
wchar_t const* const transportationRanks[] = {L"trans:class",
                                              L"trans:function",
                                              L"trans:usage",
                                              L"trans:trafficArea",
                                              L"trans:auxiliaryTrafficArea",
                                              L"trans:lod0Network",
                                              L"trans:lod1MultiSurface",
                                              L"trans:lod2MultiSurface",
                                              L"trans:lod3MultiSurface",
                                              L"trans:lod4MultiSurface"};

} // namespace

TransportationTypeNode::TransportationTypeNode(AttributeMap const& attributes,
                                               std::shared_ptr<Envelope> envelope,
                                               std::wstring_view id, bool writeId,
                                               std::wstring_view tag)
    : RootNode(attributes, std::move(envelope), id, writeId, tag) {}

void TransportationTypeNode::sortChildren(XmlWriter& writer) {
    if (writer.version == 2)
        sortNodesByTable(children, transportationRanks, std::size(transportationRanks));
    else
        sortByGeneralRule(children, writer.version);
}

} // namespace gml
