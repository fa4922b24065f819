#include "koltx/MeshBuilder.h"

#include "kolt/StringUtils.h"
#include "koltx/MaterialBuilder.h"

#include <stdexcept>
#include <string>

namespace koltx {

namespace {

// Groups values recorded as (face, value) pairs into per-face ranges, keeping the order in which
// they were added within each face. Already grouped input is moved as it is.
void groupByFace(uint32_t faceCount, std::vector<uint32_t> const& faces,
                 std::vector<uint32_t>& values, std::vector<uint32_t>& offsets,
                 std::vector<uint32_t>& grouped) {
    offsets.assign(size_t(faceCount) + 1, 0);
    bool ordered = true;
    for (size_t i = 0; i < faces.size(); ++i) {
        ++offsets[size_t(faces[i]) + 1];
        if (i > 0 && faces[i] < faces[i - 1])
            ordered = false;
    }
    for (size_t f = 0; f < faceCount; ++f)
        offsets[f + 1] += offsets[f];
    if (ordered) {
        grouped = std::move(values);
        return;
    }
    grouped.resize(values.size());
    std::vector<uint32_t> cursor(offsets.begin(), offsets.end() - 1);
    for (size_t i = 0; i < faces.size(); ++i)
        grouped[cursor[faces[i]]++] = values[i];
}

[[noreturn]] void fail(std::wstring const& name, uint32_t face, std::string const& problem) {
    throw std::runtime_error("mesh '" + kolt::StringUtils::toUTF8(name) + "', face " +
                             std::to_string(face) + ": " + problem);
}

} // namespace

MeshBuilder::MeshBuilder() = default;

MeshBuilder::~MeshBuilder() = default;

void MeshBuilder::setName(std::wstring const& value) {
    name = value;
}

void MeshBuilder::setName(std::wstring&& value) {
    name = std::move(value);
}

void MeshBuilder::reserve(size_t vertices, size_t faces, size_t indices) {
    vertexCoords.reserve(vertices * 3);
    faceMaterialIndices.reserve(faces);
    indexFaces.reserve(indices);
    indexValues.reserve(indices);
}

uint32_t MeshBuilder::addVertexCoords(double const* xyz) {
    vertexCoords.insert(vertexCoords.end(), xyz, xyz + 3);
    return static_cast<uint32_t>(vertexCoords.size() / 3 - 1);
}

uint32_t MeshBuilder::addFace() {
    faceMaterialIndices.push_back(0);
    return faceCount++;
}

void MeshBuilder::addFaceVertexIndex(uint32_t face, uint32_t vertex) {
    noteFace(face);
    indexFaces.push_back(face);
    indexValues.push_back(vertex);
}

uint32_t MeshBuilder::addUVCoords(uint32_t uvSet, double const* uv) {
    if (uvSet >= uvSets.size())
        uvSets.resize(size_t(uvSet) + 1);
    auto& coords = uvSets[uvSet].coords;
    coords.insert(coords.end(), uv, uv + 2);
    return static_cast<uint32_t>(coords.size() / 2 - 1);
}

void MeshBuilder::addFaceUVIndex(uint32_t face, uint32_t uvSet, uint32_t uvIndex) {
    noteFace(face);
    if (uvSet >= uvSets.size())
        uvSets.resize(size_t(uvSet) + 1);
    uvSets[uvSet].faces.push_back(face);
    uvSets[uvSet].indices.push_back(uvIndex);
}

void MeshBuilder::addFaceHoleIndex(uint32_t face, uint32_t holeFace) {
    noteFace(face);
    holeFaces.push_back(face);
    holeValues.push_back(holeFace);
}

void MeshBuilder::setFaceMaterialIndex(uint32_t face, uint32_t materialIndex) {
    noteFace(face);
    if (face < faceCount)
        faceMaterialIndices[face] = materialIndex;
}

uint32_t MeshBuilder::addMaterial(std::shared_ptr<Material> const& material) {
    materials.push_back(material);
    return static_cast<uint32_t>(materials.size() - 1);
}

// Problems of the calls are kept for createSharedAndReset, which is where a caller expects them.
void MeshBuilder::noteFace(uint32_t face) {
    if (face >= faceCount && badFace == NO_FACE)
        badFace = face;
}

void MeshBuilder::reset() {
    name.clear();
    vertexCoords.clear();
    faceCount = 0;
    indexFaces.clear();
    indexValues.clear();
    uvSets.clear();
    holeFaces.clear();
    holeValues.clear();
    faceMaterialIndices.clear();
    materials.clear();
    badFace = NO_FACE;
}

std::shared_ptr<Mesh> MeshBuilder::createSharedAndReset(std::wstring* /*warnings*/) {
    struct ResetOnExit {
        MeshBuilder& builder;
        ~ResetOnExit() { builder.reset(); }
    } const resetOnExit{*this};

    if (badFace != NO_FACE)
        fail(name, badFace, "no such face (the mesh has " + std::to_string(faceCount) + ")");

    std::shared_ptr<Mesh> mesh(new Mesh());
    MeshArrays& arrays = mesh->arrays;
    arrays.name = std::move(name);
    arrays.coords = std::move(vertexCoords);
    groupByFace(faceCount, indexFaces, indexValues, arrays.faceOffsets, arrays.indices);
    arrays.uvSets.resize(uvSets.size());
    for (size_t set = 0; set < uvSets.size(); ++set) {
        auto& target = arrays.uvSets[set];
        target.coords = std::move(uvSets[set].coords);
        groupByFace(faceCount, uvSets[set].faces, uvSets[set].indices, target.faceOffsets,
                    target.indices);
    }
    groupByFace(faceCount, holeFaces, holeValues, arrays.holeOffsets, arrays.holes);
    arrays.faceMaterials = std::move(faceMaterialIndices);
    arrays.materials = std::move(materials);
    check(*mesh);
    return mesh;
}

void MeshBuilder::check(Mesh& mesh) {
    MeshArrays& arrays = mesh.arrays;
    uint32_t const faceCount = mesh.getFaceCount();
    uint32_t const vertexCount = mesh.getVertexCount();
    for (uint32_t face = 0; face < faceCount; ++face) {
        uint32_t const count = mesh.getFaceVertexCount(face);
        if (count < 3)
            fail(arrays.name, face,
                 "has " + std::to_string(count) + " vertices, at least 3 are needed");
        uint32_t const* indices = mesh.getFaceVertexIndices(face);
        for (uint32_t i = 0; i < count; ++i)
            if (indices[i] >= vertexCount)
                fail(arrays.name, face,
                     "vertex index " + std::to_string(indices[i]) + " out of range");
    }

    for (size_t set = 0; set < arrays.uvSets.size(); ++set) {
        auto const& target = arrays.uvSets[set];
        uint32_t const uvCount = static_cast<uint32_t>(target.coords.size() / 2);
        for (uint32_t face = 0; face < faceCount; ++face) {
            uint32_t const count = target.faceOffsets[face + 1] - target.faceOffsets[face];
            if (count != 0 && count != mesh.getFaceVertexCount(face))
                fail(arrays.name, face,
                     std::to_string(count) + " UV indices in set " + std::to_string(set) + " for " +
                         std::to_string(mesh.getFaceVertexCount(face)) + " vertices");
            for (uint32_t i = target.faceOffsets[face]; i < target.faceOffsets[face + 1]; ++i)
                if (target.indices[i] >= uvCount)
                    fail(arrays.name, face,
                         "UV index " + std::to_string(target.indices[i]) + " out of range in set " +
                             std::to_string(set));
        }
    }

    mesh.holeFaces.assign(faceCount, false);
    for (uint32_t face = 0; face < faceCount; ++face) {
        for (uint32_t i = arrays.holeOffsets[face]; i < arrays.holeOffsets[face + 1]; ++i) {
            uint32_t const hole = arrays.holes[i];
            if (hole >= faceCount || hole == face)
                fail(arrays.name, face,
                     "hole face " + std::to_string(hole) + " is not another face");
            if (mesh.holeFaces[hole])
                fail(arrays.name, face, "face " + std::to_string(hole) + " is a hole twice");
            mesh.holeFaces[hole] = true;
        }
    }
    for (uint32_t face = 0; face < faceCount; ++face)
        if (mesh.holeFaces[face] && mesh.getFaceHoleCount(face) > 0)
            fail(arrays.name, face, "a hole cannot have holes of its own");

    if (arrays.materials.empty() && faceCount > 0)
        arrays.materials.push_back(MaterialBuilder().createSharedAndReset(nullptr));
    for (uint32_t face = 0; face < faceCount; ++face)
        if (arrays.faceMaterials[face] >= arrays.materials.size())
            fail(arrays.name, face,
                 "material index " + std::to_string(arrays.faceMaterials[face]) + " out of range");
}

namespace {

// Offsets of per-face ranges as grouping makes them: from 0, one per face and one more, never
// falling, ending at the number of values.
bool groupedOffsets(std::vector<uint32_t> const& offsets, size_t faces, size_t values) {
    if (offsets.size() != faces + 1 || offsets.front() != 0 || offsets.back() != values)
        return false;
    for (size_t f = 0; f < faces; ++f)
        if (offsets[f + 1] < offsets[f])
            return false;
    return true;
}

} // namespace

std::shared_ptr<Mesh> MeshBuilder::adopt(MeshArrays& arrays) {
    size_t const faces = arrays.faceOffsets.empty() ? 0 : arrays.faceOffsets.size() - 1;
    // Only arrays that adding them one by one would give back unchanged: whole vertices and UV
    // pairs, ranges as grouping makes them, and a last UV set that a builder would create.
    bool same = !arrays.faceOffsets.empty() && arrays.coords.size() % 3 == 0 &&
                groupedOffsets(arrays.faceOffsets, faces, arrays.indices.size()) &&
                groupedOffsets(arrays.holeOffsets, faces, arrays.holes.size());
    for (auto const& set : arrays.uvSets)
        same = same && set.coords.size() % 2 == 0 &&
               groupedOffsets(set.faceOffsets, faces, set.indices.size());
    if (!arrays.uvSets.empty())
        same =
            same && (!arrays.uvSets.back().coords.empty() || !arrays.uvSets.back().indices.empty());
    if (!same)
        return nullptr;
    std::shared_ptr<Mesh> mesh(new Mesh());
    mesh->arrays = std::move(arrays);
    // A face without a material index has index 0, as have all where the mesh has no material.
    if (mesh->arrays.materials.empty())
        mesh->arrays.faceMaterials.assign(faces, 0);
    else
        mesh->arrays.faceMaterials.resize(faces, 0);
    check(*mesh);
    return mesh;
}

std::shared_ptr<Mesh> MeshBuilder::renamed(std::shared_ptr<Mesh> mesh, std::wstring name) {
    if (!mesh)
        return mesh;
    if (mesh.use_count() != 1) {
        std::shared_ptr<Mesh> copy(new Mesh());
        copy->arrays = mesh->arrays;
        copy->holeFaces = mesh->holeFaces;
        mesh = std::move(copy);
    }
    mesh->arrays.name = std::move(name);
    return mesh;
}

MeshArrays MeshBuilder::takeArrays(std::shared_ptr<Mesh>& mesh) {
    std::shared_ptr<Mesh> held = std::move(mesh);
    if (!held)
        return MeshArrays();
    if (held.use_count() != 1)
        return held->arrays;
    return std::move(held->arrays);
}

} // namespace koltx
