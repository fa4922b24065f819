#pragma once

#include "koltx/Material.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace koltx {

// The flat arrays of a polygon mesh: the one layout of both the immutable Mesh and the editable
// meshes of the encode preparation. Face f owns indices [faceOffsets[f], faceOffsets[f + 1]);
// per UV set each face owns a range of UV indices, empty or as long as its vertex range; face f's
// holes are holes[holeOffsets[f]] up to holeOffsets[f + 1], themselves faces of the mesh.
struct MeshArrays {
    struct UVSet {
        std::vector<double> coords; // u, v of each texture vertex
        std::vector<uint32_t> faceOffsets{0};
        std::vector<uint32_t> indices;
    };

    std::wstring name;
    std::vector<double> coords; // x, y, z of each vertex
    std::vector<uint32_t> faceOffsets{0};
    std::vector<uint32_t> indices;
    std::vector<UVSet> uvSets;
    std::vector<uint32_t> holeOffsets{0};
    std::vector<uint32_t> holes;
    std::vector<uint32_t> faceMaterials; // per face, into materials
    std::vector<std::shared_ptr<Material>> materials;
};

} // namespace koltx
