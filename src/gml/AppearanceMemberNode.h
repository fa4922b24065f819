#pragma once

#include "gml/PolygonNode.h"

#include <cstdint>
#include <memory>
#include <string>

namespace koltx {
class Material;
class Mesh;
} // namespace koltx

namespace gml {

class XmlWriter;

// One surface data entry of the document's appearance. It refers to polygons by their ids.
class AppearanceMemberNode {
public:
    explicit AppearanceMemberNode(std::wstring_view name) : name(name) {}
    virtual ~AppearanceMemberNode() = default;

    // Whether this member already stands for `material`, so that it can be reused.
    virtual bool matches(std::shared_ptr<koltx::Material> const& material) const = 0;
    virtual void addTarget(std::wstring const& polygonId, std::wstring const& ringId,
                           std::shared_ptr<koltx::Mesh> const& mesh, std::uint32_t faceIndex) = 0;
    // The same for a polygon of the document tree, which holds its ids in its own form.
    virtual void addTarget(std::shared_ptr<PolygonNode const> const& polygon) {
        addTarget(polygon->polygonId(), polygon->ringId(), polygon->mesh, polygon->faceIndex);
    }
    virtual void write(XmlWriter& writer) = 0;

    std::wstring name;
};

} // namespace gml
