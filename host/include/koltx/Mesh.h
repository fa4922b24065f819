#pragma once

#include "koltx/Material.h"

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

    std::wstring const& getName() const { return name; }

    // x, y, z of vertex 0, then of vertex 1, and so on.
    std::vector<double> const& getVertexCoords() const { return vertexCoords; }
    uint32_t getVertexCount() const { return static_cast<uint32_t>(vertexCoords.size() / 3); }

    uint32_t getFaceCount() const { return static_cast<uint32_t>(faceVertexOffsets.size() - 1); }
    uint32_t const* getFaceVertexIndices(uint32_t face) const;
    uint32_t getFaceVertexCount(uint32_t face) const;
    // All faces' vertex indices back to back; face f owns [offsets[f], offsets[f + 1]).
    std::vector<uint32_t> const& getVertexIndices() const { return vertexIndices; }
    std::vector<uint32_t> const& getFaceVertexOffsets() const { return faceVertexOffsets; }

    uint32_t getUVSetCount() const { return static_cast<uint32_t>(uvSets.size()); }
    // u, v of each texture vertex of the set; empty for a set that does not exist.
    std::vector<double> const& getUVCoords(uint32_t uvSet) const;
    // Null and 0 when the face has no UVs in the set.
    uint32_t const* getFaceUVIndices(uint32_t face, uint32_t uvSet) const;
    uint32_t getFaceUVCount(uint32_t face, uint32_t uvSet) const;

    uint32_t const* getFaceHoleIndices(uint32_t face) const;
    uint32_t getFaceHoleCount(uint32_t face) const;
    // True if any face has holes.
    bool hasHoles() const { return !holeIndices.empty(); }
    // True if the face is listed as a hole of another face.
    bool isHoleFace(uint32_t face) const;

    std::vector<uint32_t> const& getFaceMaterialIndices() const { return faceMaterialIndices; }
    std::vector<std::shared_ptr<Material>> const& getMaterials() const { return materials; }

private:
    friend class MeshBuilder;
    Mesh() = default;

    struct UVSet {
        std::vector<double> coords;
        std::vector<uint32_t> faceOffsets;
        std::vector<uint32_t> indices;
    };

    std::wstring name;
    std::vector<double> vertexCoords;
    std::vector<uint32_t> faceVertexOffsets{0};
    std::vector<uint32_t> vertexIndices;
    std::vector<UVSet> uvSets;
    std::vector<uint32_t> faceHoleOffsets{0};
    std::vector<uint32_t> holeIndices;
    std::vector<bool> holeFaces;
    std::vector<uint32_t> faceMaterialIndices;
    std::vector<std::shared_ptr<Material>> materials;
};

using MeshPtr = std::shared_ptr<Mesh>;
using MeshPtrVector = std::vector<MeshPtr>;

} // namespace koltx
