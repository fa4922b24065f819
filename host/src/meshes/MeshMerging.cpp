#include "koltx/MeshMerging.h"

#include "MeshData.h"

namespace koltx {

std::shared_ptr<Mesh> MeshMerging::merge(std::vector<std::shared_ptr<Mesh>> const& meshes,
                                         std::wstring const& name) {
    MeshData merged;
    for (auto const& mesh : meshes)
        if (mesh)
            merged.append(MeshData::fromMesh(*mesh));
    merged.name = name;
    return merged.toMesh();
}

} // namespace koltx
