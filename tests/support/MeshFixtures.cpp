#include "MeshFixtures.h"

#include "koltx/GeometryBuilder.h"
#include "koltx/MeshBuilder.h"

namespace fixtures {

std::shared_ptr<koltx::Mesh> quadSoup(uint32_t cells, double size, std::wstring const& name) {
    koltx::MeshBuilder builder;
    builder.setName(name);
    builder.reserve(size_t(cells) * cells * 4, size_t(cells) * cells, size_t(cells) * cells * 4);
    double const step = size / cells;
    for (uint32_t i = 0; i < cells; ++i) {
        for (uint32_t j = 0; j < cells; ++j) {
            uint32_t const face = builder.addFace();
            static int const corner[4][2] = {{0, 0}, {0, 1}, {1, 1}, {1, 0}};
            for (auto const& c : corner) {
                double const xyz[3] = {(i + c[0]) * step, 0.0, (j + c[1]) * step};
                double const uv[2] = {double(c[0]), double(c[1])};
                builder.addFaceVertexIndex(face, builder.addVertexCoords(xyz));
                builder.addFaceUVIndex(face, 0, builder.addUVCoords(0, uv));
            }
        }
    }
    return builder.createSharedAndReset(nullptr);
}

std::shared_ptr<koltx::Mesh> squareWithHole(std::wstring const& name,
                                            std::shared_ptr<koltx::Material> const& material) {
    koltx::MeshBuilder builder;
    builder.setName(name);
    if (material)
        builder.addMaterial(material);
    auto ring = [&](std::vector<std::pair<double, double>> const& points) {
        uint32_t const face = builder.addFace();
        for (auto const& p : points) {
            double const xyz[3] = {p.first, 0.0, p.second};
            double const uv[2] = {p.first / 10.0, p.second / 10.0};
            builder.addFaceVertexIndex(face, builder.addVertexCoords(xyz));
            builder.addFaceUVIndex(face, 0, builder.addUVCoords(0, uv));
        }
        return face;
    };
    uint32_t const outer = ring({{0, 0}, {0, 10}, {10, 10}, {10, 0}});
    ring({{20, 0}, {20, 5}, {25, 0}});
    uint32_t const hole = ring({{4, 4}, {6, 4}, {6, 6}, {4, 6}});
    builder.addFaceHoleIndex(outer, hole);
    return builder.createSharedAndReset(nullptr);
}

std::shared_ptr<koltx::Mesh> meshOf(std::vector<std::vector<double>> const& vertices,
                                    std::vector<std::vector<std::uint32_t>> const& faces,
                                    std::vector<std::vector<double>> const& faceUvs,
                                    std::wstring const& name) {
    koltx::MeshBuilder builder;
    builder.setName(name);
    for (auto const& vertex : vertices)
        builder.addVertexCoords(vertex.data());
    for (std::size_t f = 0; f < faces.size(); ++f) {
        std::uint32_t const face = builder.addFace();
        for (std::uint32_t index : faces[f])
            builder.addFaceVertexIndex(face, index);
        for (std::size_t i = 0; f < faceUvs.size() && i + 1 < faceUvs[f].size(); i += 2) {
            double const uv[2] = {faceUvs[f][i], faceUvs[f][i + 1]};
            builder.addFaceUVIndex(face, 0, builder.addUVCoords(0, uv));
        }
    }
    return builder.createSharedAndReset(nullptr);
}

std::shared_ptr<koltx::Geometry>
geometryOf(std::vector<std::shared_ptr<koltx::Mesh>> const& meshes) {
    koltx::GeometryBuilder builder;
    for (auto const& mesh : meshes)
        builder.addMesh(mesh);
    return builder.createSharedAndReset(nullptr);
}

bool uvIndicesValid(koltx::Mesh const& mesh) {
    for (uint32_t s = 0; s < mesh.getUVSetCount(); ++s) {
        size_t const count = mesh.getUVCoords(s).size() / 2;
        for (uint32_t f = 0; f < mesh.getFaceCount(); ++f) {
            uint32_t const n = mesh.getFaceUVCount(f, s);
            if (n != 0 && n != mesh.getFaceVertexCount(f))
                return false;
            for (uint32_t k = 0; k < n; ++k)
                if (mesh.getFaceUVIndices(f, s)[k] >= count)
                    return false;
        }
    }
    return true;
}

} // namespace fixtures
