#pragma once

#include "gml/CityElementNode.h"

#include <map>
#include <memory>
#include <string>
#include <string_view>

namespace gml {

struct Envelope;

// Name to value, both as text; typing happens when the document is written.
using AttributeMap = std::map<std::wstring, std::wstring>;

// A thematic feature directly below "core:cityObjectMember".
class RootNode : public CityElementNode {
public:
    RootNode(AttributeMap const& attributes, std::shared_ptr<Envelope> envelope,
             std::wstring_view id, bool writeId, std::wstring_view tag);

    // Envelope, then attributes by name, then the sorted children.
    void writeContent(XmlWriter& writer) override;

    AttributeMap attributes;
    std::shared_ptr<Envelope> envelope;
};

} // namespace gml
