#pragma once

#include "gml/RootNode.h"

namespace gml {

// A top-level bridge; CityGML 2.0 documents order its children by the bridge schema's sequence.
class BridgeTypeNode : public RootNode {
public:
    BridgeTypeNode(AttributeMap const& attributes, std::shared_ptr<Envelope> envelope,
                   std::wstring_view id, bool writeId, std::wstring_view tag);

    void sortChildren(XmlWriter& writer) override;
};

} // namespace gml
