#pragma once

#include "koltx/Reports.h"

#include <array>
#include <memory>

namespace koltx {

class Geometry;

// One generated leaf: a geometry in its own coordinates, the transform that places it, and what
// the generation reported for it.
class Shape {
public:
    // 4x4 matrix in column-major order: the translation stands in elements 12, 13 and 14.
    using Transform = std::array<double, 16>;

    static Transform identity();
    static Transform translation(double x, double y, double z);

    // A leaf without geometry is refused by the preparator when it is added.
    explicit Shape(std::shared_ptr<Geometry> geometry, Transform const& transform = identity(),
                   ReportsPtr reports = ReportsPtr());

    std::shared_ptr<Geometry> const& getGeometry() const { return geometry; }
    Transform const& getTransform() const { return transform; }
    // May be null.
    ReportsPtr const& getReports() const { return reports; }

    // Makes the geometry the encoder's alone: the preparator takes it when the leaf is added
    // (the leaf is left without one), so that the meshes are freed as soon as they are prepared.
    void handOver() { handedOver = true; }
    // The geometry, taken from a handed-over leaf and shared from any other.
    std::shared_ptr<Geometry> takeGeometry();

private:
    bool handedOver = false;
    std::shared_ptr<Geometry> geometry;
    Transform transform;
    ReportsPtr reports;
};

} // namespace koltx
