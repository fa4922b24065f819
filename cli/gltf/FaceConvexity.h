#pragma once

#include <cstdint>

namespace koltx {
class Mesh;
}

// Which faces can be fanned into triangles as they stand, and which need the tesselator.
class FaceConvexity {
public:
    // True for triangles and for polygons whose corners all turn the same way around the face's
    // normal; collinear corners count as no turn.
    static bool convex(koltx::Mesh const& mesh, uint32_t face);
    // True when the mesh has holes or a face that is not convex.
    static bool needsTesselator(koltx::Mesh const& mesh);
};
