#pragma once

#include "gml/CityElementNode.h"

#include <memory>

namespace koltx {
class Mesh;
}

namespace gml {

// One GML geometry element of a mesh path. It writes GML's property elements between itself
// and its children: one around all of them, or one around each.
class GeometryNode : public CityElementNode {
public:
    GeometryNode(std::wstring_view id, bool writeId, std::wstring_view tag,
                 std::shared_ptr<koltx::Mesh> mesh);

    bool isOrientableSurface() const override;
    // Children keep the order in which they were created.
    void writeContent(XmlWriter& writer) override;
    // An orientable surface leaves its element to each of its polygons.
    bool writesOwnTag() const override;

    std::shared_ptr<koltx::Mesh> mesh;
};

} // namespace gml
