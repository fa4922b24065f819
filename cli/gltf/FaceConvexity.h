#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace koltx {
class Mesh;
}

// Which faces can be fanned into triangles as they stand, and which need the tesselator.
class FaceConvexity {
public:
    // True for triangles and for polygons whose corners all turn the same way around the face's
    // normal; collinear corners count as no turn.
    static bool convex(koltx::Mesh const& mesh, uint32_t face);
    // The faces of `mesh` (no holes) that are not convex, as triangles (clipped ears, or the
    // host's tesselator where clipping fails) in a mesh of their own (same name, materials and
    // UVs), marked in `concave`; null when every face is convex.
    static std::shared_ptr<koltx::Mesh>
    triangulateConcave(koltx::Mesh const& mesh, std::vector<bool>& concave, std::wstring& warnings);
};
