#pragma once

#include "koltx/Material.h"
#include "koltx/Mesh.h"
#include "koltx/MeshArrays.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace koltx {

// A mesh in the editable form of the encode preparation: the arrays of a Mesh, with the
// operations that the preparation applies to them.
struct MeshData : MeshArrays {
    static MeshData fromMesh(Mesh const& mesh);
    // As fromMesh, moving the arrays where `mesh` alone holds them; `mesh` is emptied.
    static MeshData take(std::shared_ptr<Mesh>& mesh);
    std::shared_ptr<Mesh> toMesh() const;
    // As toMesh, taking the arrays over where they are in the form a builder gives them, and
    // moving the name (often long) in any case; the data is left empty.
    std::shared_ptr<Mesh> takeMesh();

private:
    std::shared_ptr<Mesh> build(std::wstring meshName) const;

public:
    uint32_t faceCount() const { return static_cast<uint32_t>(faceOffsets.size() - 1); }
    uint32_t vertexCount() const { return static_cast<uint32_t>(coords.size() / 3); }
    bool hasHoles() const { return !holes.empty(); }

    // Column-major 4x4 matrix, applied to every vertex.
    void transform(std::array<double, 16> const& matrix);
    // Appends the faces of `other`; its materials join this mesh's list, equal pointers once.
    void append(MeshData const& other);
    // Joins vertices closer than `tolerance` and drops indices that then repeat their
    // predecessor within a face, unless the face would keep fewer than three.
    void mergeVertices(double tolerance);
    // Drops UV coordinates that no face uses and joins exact duplicates.
    void cleanupUVs();
    // True if every coordinate of the face is finite.
    bool isFinite(uint32_t face) const;
    // Faces with holes where the face or a hole has a coordinate that is not finite lose their
    // holes, which become faces of their own: no tesselator copes with such points. Returns the
    // number of faces changed.
    uint32_t unlinkNonFiniteHoles();
};

} // namespace koltx
