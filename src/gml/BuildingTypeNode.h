#pragma once

#include "gml/RootNode.h"

namespace gml {

// A top-level building; CityGML 2.0 documents order its children by the building schema's sequence.
class BuildingTypeNode : public RootNode {
public:
    BuildingTypeNode(AttributeMap const& attributes, std::shared_ptr<Envelope> envelope,
                     std::wstring_view id, bool writeId, std::wstring_view tag);

    void sortChildren(XmlWriter& writer) override;
};

} // namespace gml
