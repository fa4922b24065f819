#pragma once

#include "koltx/Material.h"
#include "koltx/MeshArrays.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace koltx {

class MeshBuilder;

// An immutable polygon mesh in flat arrays. A face is a list of vertex indices; a face may have
// holes, which are faces of the same mesh listed in its hole indices. Each UV set has its own
// coordinates and, per face, either no UV indices or one per vertex index. Every face has a
// material index into getMaterials(); hole faces carry one too but it is not used.
class Mesh {
public:
    Mesh(Mesh const&) = delete;
    Mesh& operator=(Mesh const&) = delete;
    virtual ~Mesh();

    std::wstring const& getName() const { return arrays.name; }
    // Everything at once, in the layout the encode preparation edits.
    MeshArrays const& getArrays() const { return arrays; }

    // x, y, z of vertex 0, then of vertex 1, and so on.
    std::vector<double> const& getVertexCoords() const { return arrays.coords; }
    uint32_t getVertexCount() const { return static_cast<uint32_t>(arrays.coords.size() / 3); }

    uint32_t getFaceCount() const { return static_cast<uint32_t>(arrays.faceOffsets.size() - 1); }
    uint32_t const* getFaceVertexIndices(uint32_t face) const;
    uint32_t getFaceVertexCount(uint32_t face) const;
    // All faces' vertex indices back to back; face f owns [offsets[f], offsets[f + 1]).
    std::vector<uint32_t> const& getVertexIndices() const { return arrays.indices; }
    std::vector<uint32_t> const& getFaceVertexOffsets() const { return arrays.faceOffsets; }

    uint32_t getUVSetCount() const { return static_cast<uint32_t>(arrays.uvSets.size()); }
    // u, v of each texture vertex of the set; empty for a set that does not exist.
    std::vector<double> const& getUVCoords(uint32_t uvSet) const;
    // Null and 0 when the face has no UVs in the set.
    uint32_t const* getFaceUVIndices(uint32_t face, uint32_t uvSet) const;
    uint32_t getFaceUVCount(uint32_t face, uint32_t uvSet) const;

    uint32_t const* getFaceHoleIndices(uint32_t face) const;
    uint32_t getFaceHoleCount(uint32_t face) const;
    // True if any face has holes.
    bool hasHoles() const { return !arrays.holes.empty(); }
    // True if the face is listed as a hole of another face.
    bool isHoleFace(uint32_t face) const;

    std::vector<uint32_t> const& getFaceMaterialIndices() const { return arrays.faceMaterials; }
    std::vector<std::shared_ptr<Material>> const& getMaterials() const { return arrays.materials; }

private:
    friend class MeshBuilder;
    Mesh() = default;

    MeshArrays arrays;
    std::vector<bool> holeFaces; // true for a face that is another face's hole
};

using MeshPtr = std::shared_ptr<Mesh>;
using MeshPtrVector = std::vector<MeshPtr>;

} // namespace koltx
