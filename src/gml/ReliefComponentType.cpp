#include "gml/ReliefComponentType.h"

#include "gml/XmlWriter.h"
#include "gml/internal/ChildOrdering.h"

#include <iterator>

namespace gml {

namespace {

wchar_t const* const reliefRanks[] = {L"dem:lod", L"dem:reliefComponent"};

} // namespace

ReliefComponentType::ReliefComponentType(AttributeMap const& attributes,
                                         std::shared_ptr<Envelope> envelope, std::wstring_view id,
                                         bool writeId, std::wstring_view tag)
    : RootNode(attributes, std::move(envelope), id, writeId, tag) {}

void ReliefComponentType::sortChildren(XmlWriter&) {
    sortNodesByTable(children, reliefRanks, std::size(reliefRanks));
}

bool ReliefComponentType::isReliefComponent(XmlWriter&) const {
    return true;
}

} // namespace gml
