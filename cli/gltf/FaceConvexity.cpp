#include "FaceConvexity.h"

#include "EarClipping.h"

#include <koltx/Mesh.h>
#include <koltx/MeshBuilder.h>
#include <koltx/MeshUtils.h>

#include <cmath>

bool FaceConvexity::convex(koltx::Mesh const& mesh, uint32_t face) {
    auto const& offsets = mesh.getFaceVertexOffsets();
    uint32_t const n = offsets[face + 1] - offsets[face];
    if (n <= 3)
        return true;
    uint32_t const* v = mesh.getVertexIndices().data() + offsets[face];
    double const* c = mesh.getVertexCoords().data();
    // Inline in the header: this runs for every face of a tile.
    double normal[3];
    EarClipping::normal(c, v, n, normal);
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

std::shared_ptr<koltx::Mesh> FaceConvexity::triangulateConcave(koltx::Mesh const& mesh,
                                                               std::vector<bool>& concave,
                                                               std::wstring& warnings) {
    concave.clear();
    uint32_t const faces = mesh.getFaceCount();
    uint32_t first = 0;
    while (first < faces && convex(mesh, first))
        ++first;
    if (first == faces)
        return nullptr;
    concave.assign(faces, false);
    koltx::MeshBuilder builder;
    builder.setName(mesh.getName());
    for (auto const& material : mesh.getMaterials())
        builder.addMaterial(material);
    for (uint32_t set = 0; set < mesh.getUVSetCount(); ++set) {
        auto const& uvs = mesh.getUVCoords(set);
        for (std::size_t i = 0; i + 1 < uvs.size(); i += 2)
            builder.addUVCoords(set, uvs.data() + i);
    }
    // Only the corners these faces use are copied. Ears are clipped here; the faces that
    // clipping cannot settle go whole to the host's tesselator.
    std::vector<uint32_t> vertexOf(mesh.getVertexCount(), UINT32_MAX);
    auto const& coords = mesh.getVertexCoords();
    std::vector<uint32_t> triangles, whole;
    bool hard = false;
    for (uint32_t f = first; f < faces; ++f) {
        if (f != first && convex(mesh, f))
            continue;
        concave[f] = true;
        uint32_t const n = mesh.getFaceVertexCount(f);
        uint32_t const* v = mesh.getFaceVertexIndices(f);
        bool const clipped = EarClipping::triangulate(coords.data(), v, n, triangles);
        if (!clipped) {
            hard = true;
            whole.resize(n);
            for (uint32_t k = 0; k < n; ++k)
                whole[k] = k;
        }
        std::vector<uint32_t> const& pieces = clipped ? triangles : whole;
        uint32_t const size = clipped ? 3 : n;
        for (std::size_t t = 0; t < pieces.size(); t += size) {
            uint32_t const target = builder.addFace();
            builder.setFaceMaterialIndex(target, f < mesh.getFaceMaterialIndices().size()
                                                     ? mesh.getFaceMaterialIndices()[f]
                                                     : 0);
            for (uint32_t k = 0; k < size; ++k) {
                uint32_t const corner = v[pieces[t + k]];
                if (vertexOf[corner] == UINT32_MAX)
                    vertexOf[corner] = builder.addVertexCoords(coords.data() + size_t(corner) * 3);
                builder.addFaceVertexIndex(target, vertexOf[corner]);
            }
            for (uint32_t set = 0; set < mesh.getUVSetCount(); ++set) {
                if (mesh.getFaceUVCount(f, set) != n)
                    continue;
                uint32_t const* uvs = mesh.getFaceUVIndices(f, set);
                for (uint32_t k = 0; k < size; ++k)
                    builder.addFaceUVIndex(target, set, uvs[pieces[t + k]]);
            }
        }
    }
    std::shared_ptr<koltx::Mesh> part = builder.createSharedAndReset(&warnings);
    return hard ? koltx::MeshUtils::triangulate(part, &warnings) : part;
}
