#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

// Triangles of one simple polygon without holes by clipping ears in the plane of its largest
// projection: cheap for the few corners a face has. Anything it cannot settle (crossing or
// doubled edges, collinear rests, many corners) is left to the host's tesselator.
class EarClipping {
public:
    // `count` corners `index` into `xyz` (x, y, z per vertex). On success `corners` holds
    // triples of corner numbers (0 .. count - 1) in the polygon's winding.
    static bool triangulate(double const* xyz, uint32_t const* index, uint32_t count,
                            std::vector<uint32_t>& corners);
    // The polygon's Newell normal (not normalised), robust for any simple polygon.
    static void normal(double const* xyz, uint32_t const* index, uint32_t count, double out[3]) {
        out[0] = out[1] = out[2] = 0;
        for (uint32_t i = 0; i < count; ++i) {
            double const* p = xyz + size_t(index[i]) * 3;
            double const* q = xyz + size_t(index[i + 1 < count ? i + 1 : 0]) * 3;
            out[0] += (p[1] - q[1]) * (p[2] + q[2]);
            out[1] += (p[2] - q[2]) * (p[0] + q[0]);
            out[2] += (p[0] - q[0]) * (p[1] + q[1]);
        }
    }
};
