#pragma once

#include "koltx/Shape.h"

#include <memory>
#include <string>
#include <vector>

namespace kolt {
class AttributeMap;
}

namespace koltx {

class Geometry;

// A start shape of a generation, as our host delivers it: already carrying the leaves that
// generation produced, and optionally a geometry of its own that encoders fall back to when the
// leaves fail.
class InitialShape {
public:
    InitialShape(std::wstring name, std::shared_ptr<kolt::AttributeMap const> attributes,
                 std::vector<std::shared_ptr<Shape>> leaves,
                 std::shared_ptr<Geometry> geometry = std::shared_ptr<Geometry>());
    ~InitialShape();

    std::wstring const& getName() const { return name; }
    // Never null: a shape made without attributes has an empty map.
    kolt::AttributeMap const* getAttributeMap() const { return attributes.get(); }
    std::vector<std::shared_ptr<Shape>> const& getLeaves() const { return leaves; }
    // May be null.
    std::shared_ptr<Geometry> const& getGeometry() const { return geometry; }

private:
    std::wstring name;
    std::shared_ptr<kolt::AttributeMap const> attributes;
    std::vector<std::shared_ptr<Shape>> leaves;
    std::shared_ptr<Geometry> geometry;
};

} // namespace koltx
