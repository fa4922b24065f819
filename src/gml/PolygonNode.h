#pragma once

#include "gml/CityElementNode.h"
#include "gml/Identifiers.h"

#include <cstdint>
#include <memory>
#include <string>

namespace koltx {
class Mesh;
}

namespace gml {

// One face of a host mesh, written as one GML surface with a single closed ring. Its two ids
// are how appearance members refer to it. A document holds one of these per face, so a fresh
// identifier is kept as its bytes and a known surface tag as a view of a static row.
class PolygonNode : public CityElementNode {
public:
    // `identifier` is a fresh identifier; the ring's id is made here.
    PolygonNode(std::shared_ptr<koltx::Mesh> mesh, std::wstring_view identifier,
                std::uint32_t faceIndex, std::wstring_view surfaceTag);
    PolygonNode(std::shared_ptr<koltx::Mesh> mesh, UuidBytes const& identifier,
                std::uint32_t faceIndex, std::wstring_view surfaceTag);
    PolygonNode(PolygonNode const&) = delete;
    PolygonNode& operator=(PolygonNode const&) = delete;

    void write(XmlWriter& writer) override;
    bool hasId(std::wstring_view childId) const override;
    std::wstring identifier() const override;

    // Empty for patches and triangles, which carry no id.
    std::wstring polygonId() const;
    std::wstring ringId() const;
    std::wstring_view surfaceTag() const { return tagView; }
    // The two ids appended to `out`, for writers that keep one buffer for them.
    void appendPolygonId(std::wstring& out) const;
    void appendRingId(std::wstring& out) const;

    std::shared_ptr<koltx::Mesh> mesh;
    std::uint32_t faceIndex;

private:
    enum class Form : std::uint8_t { Polygon, Orientable, Patch, Triangle };

    void setSurfaceTag(std::wstring_view surfaceTag);
    bool hasPolygonId() const { return form != Form::Patch && form != Form::Triangle; }
    // The node's own identifier as text.
    void appendIdentifier(std::wstring& out) const;
    void appendIdText(std::wstring& out) const;

    // Set when the identifier is held as bytes; `id` is empty then.
    bool compactId = false;
    Form form = Form::Polygon;
    UuidBytes identifierBytes{};
    UuidBytes ringBytes{};
    std::wstring_view tagView;
    // Only a surface tag outside the static rows is owned.
    std::wstring ownTag;
};

} // namespace gml
