#pragma once

#include "koltx/Mesh.h"

#include <cstdint>
#include <memory>
#include <string>

namespace koltx {

// What becomes of faces with holes before a mesh is encoded.
class HoleProcessor {
public:
    enum Action : int32_t {
        // Faces and their hole faces stay as they are.
        PASS = 0,
        // Every face with holes becomes triangles covering it minus its holes (UVs carried
        // along); other faces stay as they are.
        TRIANGULATE = 1,
        // Each hole is joined into its face by a bridge edge there and back, so the face becomes
        // one ring; hole faces disappear.
        BRIDGE = 2,
    };

    // The mesh after `action`; `mesh` itself when it has no holes or the action is PASS.
    // Problems with single faces go to `warnings` (may be null) and keep those faces; a face
    // whose points are not all finite keeps its holes as faces of their own.
    static std::shared_ptr<Mesh> process(std::shared_ptr<Mesh> const& mesh, Action action,
                                         std::wstring* warnings = nullptr);
};

} // namespace koltx
