#include "koltx/HoleProcessor.h"

#include "HoleBridger.h"
#include "MeshData.h"
#include "koltx/MeshUtils.h"

namespace koltx {

std::shared_ptr<Mesh> HoleProcessor::process(std::shared_ptr<Mesh> const& mesh, Action action,
                                             std::wstring* warnings) {
    if (!mesh || !mesh->hasHoles() || (action != TRIANGULATE && action != BRIDGE))
        return mesh;
    MeshData data = MeshData::fromMesh(*mesh);
    // The tesselator crashes on points that are not finite: such faces keep their holes apart.
    uint32_t const changed = data.unlinkNonFiniteHoles();
    if (changed > 0 && warnings != nullptr)
        *warnings += std::to_wstring(changed) + L" face(s) of mesh '" + data.name +
                     L"' with coordinates that are not finite keep their holes as faces\n";
    if (action == BRIDGE) {
        HoleBridger::bridge(data);
        return data.toMesh();
    }
    return MeshUtils::triangulateHoles(changed > 0 ? data.toMesh() : mesh, warnings);
}

} // namespace koltx
