#pragma once

#include "gml/RootNode.h"

namespace gml {

// A top-level relief feature. It opens with "dem:lod" and orders its children by one table in every
// version.
class ReliefComponentType : public RootNode {
public:
    ReliefComponentType(AttributeMap const& attributes, std::shared_ptr<Envelope> envelope,
                        std::wstring_view id, bool writeId, std::wstring_view tag);

    void sortChildren(XmlWriter& writer) override;
    bool isReliefComponent(XmlWriter& writer) const override;
};

} // namespace gml
