#include "koltx/Shape.h"

#include <utility>

namespace koltx {

Shape::Transform Shape::identity() {
    return Transform{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
}

Shape::Transform Shape::translation(double x, double y, double z) {
    Transform t = identity();
    t[12] = x;
    t[13] = y;
    t[14] = z;
    return t;
}

Shape::Shape(std::shared_ptr<Geometry> geometry, Transform const& transform, ReportsPtr reports)
    : geometry(std::move(geometry)), transform(transform), reports(std::move(reports)) {}

std::shared_ptr<Geometry> Shape::takeGeometry() {
    if (handedOver)
        return std::move(geometry);
    return geometry;
}

} // namespace koltx
