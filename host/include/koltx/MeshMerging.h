#pragma once

#include "koltx/Mesh.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace koltx {

// How the meshes of one encoded instance are grouped.
class MeshMerging {
public:
    enum Action : int32_t {
        // Every mesh stays as it was added, with its name.
        KEEP = 0,
        // The meshes of one instance become one mesh.
        MERGE = 1,
    };

    // One mesh named `name` holding the faces of all `meshes` in order; a material shared by
    // pointer appears once. Null meshes are skipped.
    static std::shared_ptr<Mesh> merge(std::vector<std::shared_ptr<Mesh>> const& meshes,
                                       std::wstring const& name);
};

} // namespace koltx
