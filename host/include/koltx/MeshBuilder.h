#pragma once

#include "koltx/Mesh.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace koltx {

// Collects a mesh. Indices may be added to faces in any order (a hole's face may be built
// between two indices of its outer face); they are grouped per face when the mesh is made, in
// the order in which they were added. Nothing is allocated per face.
class MeshBuilder {
public:
    MeshBuilder();
    MeshBuilder(MeshBuilder const&) = delete;
    MeshBuilder& operator=(MeshBuilder const&) = delete;
    virtual ~MeshBuilder();

    void setName(std::wstring const& name);
    void setName(std::wstring&& name);
    void reserve(size_t vertices, size_t faces, size_t indices);

    // Three doubles; returns the vertex index.
    uint32_t addVertexCoords(double const* xyz);
    // Returns the index of the new face.
    uint32_t addFace();
    void addFaceVertexIndex(uint32_t face, uint32_t vertex);
    // Two doubles; returns the UV index within the set. Sets are created as they are used.
    uint32_t addUVCoords(uint32_t uvSet, double const* uv);
    void addFaceUVIndex(uint32_t face, uint32_t uvSet, uint32_t uvIndex);
    // Makes face `holeFace` a hole of `face`.
    void addFaceHoleIndex(uint32_t face, uint32_t holeFace);
    void setFaceMaterialIndex(uint32_t face, uint32_t materialIndex);
    // Returns the material's index; faces without one get index 0.
    uint32_t addMaterial(std::shared_ptr<Material> const& material);

    uint32_t getFaceCount() const { return faceCount; }
    uint32_t getVertexCount() const { return static_cast<uint32_t>(vertexCoords.size() / 3); }

    // Makes the mesh and empties the builder (also when it throws). Throws std::runtime_error,
    // naming the face, for an index out of range, a face with fewer than 3 vertices, a face
    // whose UV count differs from its vertex count, a face that is its own hole or a hole of two
    // faces. A mesh with faces but no material gets the default material. `warnings` may be null;
    // nothing is currently appended to it.
    std::shared_ptr<Mesh> createSharedAndReset(std::wstring* warnings);

    // `mesh` under another name. A mesh that nobody else holds is renamed where it is, so that
    // renaming copies no vertex data; a shared one is copied array by array.
    static std::shared_ptr<Mesh> renamed(std::shared_ptr<Mesh> mesh, std::wstring name);
    // The arrays of `mesh`, which is emptied. A mesh that nobody else holds gives its arrays
    // up without a copy; a shared one is copied.
    static MeshArrays takeArrays(std::shared_ptr<Mesh>& mesh);
    // The mesh of `arrays`, taking them over, where adding their contents to a builder would give
    // the same arrays; otherwise null, and `arrays` are left as they were. Throws as
    // createSharedAndReset does for the same contents.
    static std::shared_ptr<Mesh> adopt(MeshArrays& arrays);

private:
    struct UVSet {
        std::vector<double> coords;
        std::vector<uint32_t> faces;
        std::vector<uint32_t> indices;
    };

    void reset();
    void noteFace(uint32_t face);
    // Refuses what createSharedAndReset refuses; gives a mesh with faces the default material.
    static void check(Mesh& mesh);

    static constexpr uint32_t NO_FACE = UINT32_MAX;

    std::wstring name;
    std::vector<double> vertexCoords;
    uint32_t faceCount = 0;
    std::vector<uint32_t> indexFaces;
    std::vector<uint32_t> indexValues;
    std::vector<UVSet> uvSets;
    std::vector<uint32_t> holeFaces;
    std::vector<uint32_t> holeValues;
    std::vector<uint32_t> faceMaterialIndices;
    std::vector<std::shared_ptr<Material>> materials;
    uint32_t badFace = NO_FACE;
};

} // namespace koltx
