#include "koltx/HoleProcessor.h"

#include "HoleBridger.h"
#include "MeshData.h"
#include "koltx/MeshUtils.h"

namespace koltx {

std::shared_ptr<Mesh> HoleProcessor::process(std::shared_ptr<Mesh> const& mesh, Action action,
                                             std::wstring* warnings) {
    if (!mesh || !mesh->hasHoles())
        return mesh;
    switch (action) {
    case TRIANGULATE:
        return MeshUtils::triangulateHoles(mesh, warnings);
    case BRIDGE: {
        MeshData data = MeshData::fromMesh(*mesh);
        HoleBridger::bridge(data);
        return data.toMesh();
    }
    default:
        return mesh;
    }
}

} // namespace koltx
