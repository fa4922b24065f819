#pragma once

#include <koltx/Material.h>
#include <koltx/MaterialBuilder.h>
#include <koltx/Mesh.h>
#include <koltx/MeshBuilder.h>
#include <koltx/Texture.h>

#include <memory>
#include <regex>
#include <string>
#include <vector>

namespace gmltest {

// The identifier used by the reference outputs.
inline const std::wstring referenceId = L"c3f1a0be-5d2e-4c11-9a77-0e4b2c9f6d10";

// A fresh identifier: 36 characters of a version 4 UUID that starts with a letter.
inline const std::wregex
    uuidPattern(L"[a-f][0-9a-f]{7}-[0-9a-f]{4}-4[0-9a-f]{3}-[89ab][0-9a-f]{3}-[0-9a-f]{12}");

// One mesh made of faces over a shared vertex list; each face may carry UVs in set 0.
inline std::shared_ptr<koltx::Mesh> makeMesh(const std::vector<std::vector<double>>& vertices,
                                             const std::vector<std::vector<std::uint32_t>>& faces,
                                             const std::vector<std::vector<double>>& faceUvs = {}) {
    koltx::MeshBuilder builder;
    for (const auto& vertex : vertices)
        builder.addVertexCoords(vertex.data());
    for (std::size_t f = 0; f < faces.size(); ++f) {
        const std::uint32_t face = builder.addFace();
        for (std::uint32_t index : faces[f])
            builder.addFaceVertexIndex(face, index);
        if (f < faceUvs.size()) {
            for (std::size_t i = 0; i + 1 < faceUvs[f].size(); i += 2) {
                const double uv[2] = {faceUvs[f][i], faceUvs[f][i + 1]};
                builder.addFaceUVIndex(face, 0, builder.addUVCoords(0, uv));
            }
        }
    }
    return builder.createSharedAndReset(nullptr);
}

// The quad of the reference outputs: host vertices in the x-z plane, UVs over the unit square.
inline std::shared_ptr<koltx::Mesh> makeReferenceQuad() {
    return makeMesh({{0, 0, 0}, {10, 0, 0}, {10, 0, -10}, {0, 0, -10}}, {{0, 1, 2, 3}},
                    {{0, 0, 1, 0, 1, 1, 0, 1}});
}

inline std::shared_ptr<koltx::Texture> makeTexture(std::uint8_t shade) {
    return std::make_shared<koltx::Texture>(nullptr, 1, 1, koltx::Texture::FORMAT_RGB8,
                                            std::vector<std::uint8_t>{shade, shade, shade});
}

} // namespace gmltest
