#include "FaceConvexity.h"

#include <koltx/Mesh.h>
#include <koltx/MeshUtils.h>

#include <cmath>

bool FaceConvexity::convex(koltx::Mesh const& mesh, uint32_t face) {
    uint32_t const n = mesh.getFaceVertexCount(face);
    if (n <= 3)
        return true;
    double normal[3];
    koltx::MeshUtils::faceNormal(mesh, face, normal);
    uint32_t const* v = mesh.getFaceVertexIndices(face);
    double const* c = mesh.getVertexCoords().data();
    double const normal2 = normal[0] * normal[0] + normal[1] * normal[1] + normal[2] * normal[2];
    for (uint32_t i = 0; i < n; ++i) {
        double const* a = c + size_t(v[i]) * 3;
        double const* b = c + size_t(v[i + 1 < n ? i + 1 : i + 1 - n]) * 3;
        double const* d = c + size_t(v[i + 2 < n ? i + 2 : i + 2 - n]) * 3;
        double const e1[3] = {b[0] - a[0], b[1] - a[1], b[2] - a[2]};
        double const e2[3] = {d[0] - b[0], d[1] - b[1], d[2] - b[2]};
        double const cross[3] = {e1[1] * e2[2] - e1[2] * e2[1], e1[2] * e2[0] - e1[0] * e2[2],
                                 e1[0] * e2[1] - e1[1] * e2[0]};
        double const turn = cross[0] * normal[0] + cross[1] * normal[1] + cross[2] * normal[2];
        if (!(turn < 0))
            continue;
        // Collinear corners give a turn of rounding noise, which is no concavity.
        double const scale = std::sqrt((e1[0] * e1[0] + e1[1] * e1[1] + e1[2] * e1[2]) *
                                       (e2[0] * e2[0] + e2[1] * e2[1] + e2[2] * e2[2]) * normal2);
        if (turn < -1e-9 * scale)
            return false;
    }
    return true;
}

bool FaceConvexity::needsTesselator(koltx::Mesh const& mesh) {
    if (mesh.hasHoles())
        return true;
    for (uint32_t f = 0; f < mesh.getFaceCount(); ++f) {
        if (!convex(mesh, f))
            return true;
    }
    return false;
}
