#include "EarClipping.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr uint32_t MostCorners = 64; // past this, the quadratic search costs more than it saves

} // namespace

bool EarClipping::triangulate(double const* xyz, uint32_t const* index, uint32_t count,
                              std::vector<uint32_t>& corners) {
    corners.clear();
    if (count < 3 || count > MostCorners)
        return false;
    double normal[3];
    EarClipping::normal(xyz, index, count, normal);
    int const drop =
        std::abs(normal[0]) >= std::abs(normal[1]) && std::abs(normal[0]) >= std::abs(normal[2])
            ? 0
            : (std::abs(normal[1]) >= std::abs(normal[2]) ? 1 : 2);
    if (!(std::abs(normal[drop]) > 0) || !std::isfinite(normal[drop]))
        return false;
    // The two other axes in cyclic order, the second mirrored when the normal points away, so
    // that the polygon turns counter-clockwise in the plane.
    double const mirror = normal[drop] > 0 ? 1 : -1;
    double u[MostCorners], v[MostCorners];
    double lowU = INFINITY, highU = -INFINITY, lowV = INFINITY, highV = -INFINITY;
    for (uint32_t i = 0; i < count; ++i) {
        double const* p = xyz + size_t(index[i]) * 3;
        u[i] = p[(drop + 1) % 3] - xyz[size_t(index[0]) * 3 + (drop + 1) % 3];
        v[i] = (p[(drop + 2) % 3] - xyz[size_t(index[0]) * 3 + (drop + 2) % 3]) * mirror;
        lowU = std::min(lowU, u[i]);
        highU = std::max(highU, u[i]);
        lowV = std::min(lowV, v[i]);
        highV = std::max(highV, v[i]);
    }
    double const extent = std::max(highU - lowU, highV - lowV);
    double const tolerance = 1e-12 * extent * extent;
    auto const cross = [&](uint32_t a, uint32_t b, uint32_t c) {
        return (u[b] - u[a]) * (v[c] - v[a]) - (v[b] - v[a]) * (u[c] - u[a]);
    };
    uint32_t ring[MostCorners];
    uint32_t left = count;
    for (uint32_t i = 0; i < count; ++i)
        ring[i] = i;
    while (left > 3) {
        bool clipped = false;
        for (uint32_t k = 0; k < left && !clipped; ++k) {
            uint32_t const a = ring[(k + left - 1) % left], b = ring[k], c = ring[(k + 1) % left];
            if (!(cross(a, b, c) > tolerance))
                continue; // reflex or flat: no ear
            bool empty = true;
            for (uint32_t r = 0; r < left && empty; ++r) {
                uint32_t const p = ring[r];
                // A corner on the ear's border counts as inside: it could be a doubled point.
                if (p != a && p != b && p != c && cross(a, b, p) >= -tolerance &&
                    cross(b, c, p) >= -tolerance && cross(c, a, p) >= -tolerance)
                    empty = false;
            }
            if (!empty)
                continue;
            corners.insert(corners.end(), {a, b, c});
            std::copy(ring + k + 1, ring + left, ring + k);
            --left;
            clipped = true;
        }
        if (!clipped)
            break;
    }
    if (left > 3 || !(cross(ring[0], ring[1], ring[2]) > tolerance)) {
        corners.clear();
        return false;
    }
    corners.insert(corners.end(), {ring[0], ring[1], ring[2]});
    return true;
}
