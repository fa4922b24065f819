#pragma once

#include "gml/RootNode.h"

namespace gml {

// A top-level transportation feature; CityGML 2.0 documents order its children by the
// transportation schema's sequence.
class TransportationTypeNode : public RootNode {
public:
    TransportationTypeNode(AttributeMap const& attributes, std::shared_ptr<Envelope> envelope,
                           std::wstring_view id, bool writeId, std::wstring_view tag);

    void sortChildren(XmlWriter& writer) override;
};

} // namespace gml
