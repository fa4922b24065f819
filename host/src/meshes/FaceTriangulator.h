#pragma once

#include "MeshData.h"

#include <string>

namespace koltx {

// Splits every face of more than three vertices into triangles with GLU's tesselator (odd
// winding, in the face's own plane). UVs go along; points that the tesselator adds where edges
// cross get interpolated UVs. Triangles keep the material of their face. A face the tesselator
// rejects, or one with a coordinate that is not finite, stays whole, with one line in `warnings`
// (may be null). Holes must be resolved first.
class FaceTriangulator {
public:
    static void triangulate(MeshData& mesh, std::wstring* warnings);
};

} // namespace koltx
