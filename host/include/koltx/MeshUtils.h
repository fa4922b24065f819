#pragma once

#include "koltx/Mesh.h"

#include <memory>
#include <string>

namespace koltx {

class MeshUtils {
public:
    // Replaces every face that has holes by triangles that cover the face minus its holes (UVs
    // carried along, material kept), at the face's place; the hole faces go. Other faces stay as
    // they are. Returns `mesh` itself when it has no holes. A face that cannot be triangulated is
    // kept without its holes, with one line in `warnings` (may be null).
    static std::shared_ptr<Mesh> triangulateHoles(std::shared_ptr<Mesh> const& mesh,
                                                  std::wstring* warnings = nullptr);
    // Every face as triangles: faces with holes as triangulateHoles does, then every face of more
    // than three vertices with the same tesselator. Faces it rejects stay whole, with one line in
    // `warnings` (may be null).
    static std::shared_ptr<Mesh> triangulate(std::shared_ptr<Mesh> const& mesh,
                                             std::wstring* warnings = nullptr);

    // Area of the polygon of one face, its holes not subtracted.
    static double faceArea(Mesh const& mesh, uint32_t face);
    // Sum over faces that are not holes of their area minus their holes' areas.
    static double surfaceArea(Mesh const& mesh);
    // Newell normal of a face (not normalised; its length is twice the area).
    static void faceNormal(Mesh const& mesh, uint32_t face, double* normal);
};

} // namespace koltx
