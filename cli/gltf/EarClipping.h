#pragma once

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
};
