#pragma once

#include "gml/CityElementNode.h"

#include <cstdint>
#include <memory>
#include <string>

namespace koltx {
class Mesh;
}

namespace gml {

// One face of a host mesh, written as one GML surface with a single closed ring. Its two ids
// are how appearance members refer to it.
class PolygonNode : public CityElementNode {
public:
    // `identifier` is a fresh identifier; the ring's id is made here.
    PolygonNode(std::shared_ptr<koltx::Mesh> mesh, std::wstring_view identifier,
                std::uint32_t faceIndex, std::wstring_view surfaceTag);

    void write(XmlWriter& writer) override;

    // Empty for patches and triangles, which carry no id.
    std::wstring polygonId() const;

    std::shared_ptr<koltx::Mesh> mesh;
    std::uint32_t faceIndex;
    std::wstring surfaceTag;
    std::wstring ringId;
};

} // namespace gml
