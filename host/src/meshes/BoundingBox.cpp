#include "koltx/BoundingBox.h"

#include <algorithm>

namespace koltx {

BoundingBox::BoundingBox() : min(3, 0.0), max(3, 0.0) {}

BoundingBox::BoundingBox(double const* minimum, double const* maximum)
    : min(minimum, minimum + 3), max(maximum, maximum + 3), valid(true) {
    for (size_t i = 0; i < 3; ++i)
        if (min[i] > max[i])
            std::swap(min[i], max[i]);
}

BoundingBox::~BoundingBox() = default;

std::vector<double> BoundingBox::getCenter() const {
    return {(min[0] + max[0]) / 2, (min[1] + max[1]) / 2, (min[2] + max[2]) / 2};
}

std::vector<double> BoundingBox::getSize() const {
    return {max[0] - min[0], max[1] - min[1], max[2] - min[2]};
}

void BoundingBox::add(double x, double y, double z) {
    double const point[3] = {x, y, z};
    add(point);
}

void BoundingBox::add(double const* xyz) {
    if (!valid) {
        min.assign(xyz, xyz + 3);
        max.assign(xyz, xyz + 3);
        valid = true;
        return;
    }
    for (size_t i = 0; i < 3; ++i) {
        min[i] = std::min(min[i], xyz[i]);
        max[i] = std::max(max[i], xyz[i]);
    }
}

void BoundingBox::addPoints(std::vector<double> const& coords) {
    for (size_t i = 0; i + 2 < coords.size(); i += 3)
        add(coords.data() + i);
}

void BoundingBox::add(BoundingBox const& other) {
    if (!other.valid)
        return;
    add(other.min.data());
    add(other.max.data());
}

void BoundingBox::reset() {
    min.assign(3, 0.0);
    max.assign(3, 0.0);
    valid = false;
}

} // namespace koltx
