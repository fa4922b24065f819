#include "gml/CityElementNode.h"

#include "gml/XmlWriter.h"
#include "gml/internal/ChildOrdering.h"

namespace gml {

namespace {

// A node of this tag leaves no element of its own; its content takes its place.
const std::wstring unknownTag = L"Unknown";

} // namespace

CityElementNode::CityElementNode(std::wstring_view id, bool writeId, std::wstring_view tag)
    : id(id), writeId(writeId), tag(tag) {}

void CityElementNode::write(XmlWriter& writer) {
    bool const unknown = tag == unknownTag;
    if (!unknown) {
        if (writesOwnTag())
            writer.startElement(tag, writeId ? std::wstring_view(id) : std::wstring_view());
        if (isReliefComponent(writer))
            writer.writeTextElement(L"dem:lod", L"0");
    }
    writeContent(writer);
    if (!unknown && writesOwnTag())
        writer.endElement();
}

bool CityElementNode::isOrientableSurface() const {
    return false;
}

void CityElementNode::sortChildren(XmlWriter& writer) {
    sortByGeneralRule(children, writer.version);
}

void CityElementNode::writeContent(XmlWriter& writer) {
    sortChildren(writer);
    for (auto const& child : children)
        child->write(writer);
}

bool CityElementNode::isReliefComponent(XmlWriter&) const {
    return isDemReliefTag(tag);
}

bool CityElementNode::writesOwnTag() const {
    return true;
}

bool CityElementNode::hasId(std::wstring_view childId) const {
    return id.size() == childId.size() && id == childId;
}

std::wstring CityElementNode::identifier() const {
    return id;
}

void CityElementNode::addChild(std::shared_ptr<CityElementNode> child) {
    if (child)
        children.push_back(std::move(child));
}

std::shared_ptr<CityElementNode> CityElementNode::findChild(std::wstring_view childId) const {
    for (auto const& child : children) {
        if (child->hasId(childId))
            return child;
    }
    return nullptr;
}

} // namespace gml
