#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace gml {

class XmlWriter;

// A node of the document tree: one element of a mesh path. Nodes are held only by shared
// references made for their concrete class, which is why the destructor need not be virtual.
class CityElementNode {
public:
    CityElementNode(std::wstring_view id, bool writeId, std::wstring_view tag);

    // Start tag, "dem:lod" for relief components, content, end tag.
    virtual void write(XmlWriter& writer);
    virtual bool isOrientableSurface() const;
    // Puts `children` into the order the writer's version asks for.
    virtual void sortChildren(XmlWriter& writer);
    virtual void writeContent(XmlWriter& writer);
    virtual bool isReliefComponent(XmlWriter& writer) const;
    virtual bool writesOwnTag() const;
    // Whether the node's id is exactly `childId`.
    virtual bool hasId(std::wstring_view childId) const;
    // The node's id as text, also where the node keeps it in another form.
    virtual std::wstring identifier() const;

    // Appends a non-null child.
    void addChild(std::shared_ptr<CityElementNode> child);
    // First child whose id is exactly `childId`; the tag plays no part in a node's identity.
    std::shared_ptr<CityElementNode> findChild(std::wstring_view childId) const;

    std::wstring id;
    bool writeId;
    std::wstring tag;
    std::vector<std::shared_ptr<CityElementNode>> children;
};

} // namespace gml
