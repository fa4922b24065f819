#pragma once

#include "koltx/Geometry.h"
#include "koltx/Material.h"
#include "koltx/Mesh.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace fixtures {

// A grid of quads in the xz-plane, `cells` by `cells`, each quad with its own four vertices, so
// that every inner grid point exists up to four times. One UV per vertex.
std::shared_ptr<koltx::Mesh> quadSoup(uint32_t cells, double size, std::wstring const& name);

// A square from (0,0,0) to (10,0,10) (y up) with a square hole from (4,0,4) to (6,0,6), a second
// hole-free triangle, UVs on all faces, and the given material on all faces.
std::shared_ptr<koltx::Mesh> squareWithHole(
    std::wstring const& name,
    std::shared_ptr<koltx::Material> const& material = std::shared_ptr<koltx::Material>());

// One mesh of faces over a shared vertex list; face f takes the UV pairs faceUvs[f] in set 0.
std::shared_ptr<koltx::Mesh> meshOf(std::vector<std::vector<double>> const& vertices,
                                    std::vector<std::vector<std::uint32_t>> const& faces,
                                    std::vector<std::vector<double>> const& faceUvs = {},
                                    std::wstring const& name = L"");

std::shared_ptr<koltx::Geometry>
geometryOf(std::vector<std::shared_ptr<koltx::Mesh>> const& meshes);

// Every UV index of every face lies within its set's coordinates.
bool uvIndicesValid(koltx::Mesh const& mesh);

} // namespace fixtures
