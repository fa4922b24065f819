#include "MeshData.h"

#include "VertexMerger.h"
#include "koltx/MeshBuilder.h"

#include <cmath>
#include <cstring>
#include <unordered_map>

namespace koltx {

MeshData MeshData::fromMesh(Mesh const& mesh) {
    MeshData data;
    static_cast<MeshArrays&>(data) = mesh.getArrays();
    return data;
}

MeshData MeshData::take(std::shared_ptr<Mesh>& mesh) {
    MeshData data;
    static_cast<MeshArrays&>(data) = MeshBuilder::takeArrays(mesh);
    return data;
}

std::shared_ptr<Mesh> MeshData::toMesh() const {
    return build(name);
}

std::shared_ptr<Mesh> MeshData::takeMesh() {
    std::shared_ptr<Mesh> mesh = MeshBuilder::adopt(*this);
    if (!mesh)
        mesh = build(std::move(name));
    static_cast<MeshArrays&>(*this) = MeshArrays();
    return mesh;
}

std::shared_ptr<Mesh> MeshData::build(std::wstring meshName) const {
    MeshBuilder builder;
    builder.setName(std::move(meshName));
    uint32_t const faces = faceCount();
    builder.reserve(vertexCount(), faces, indices.size());
    for (size_t v = 0; v < coords.size(); v += 3)
        builder.addVertexCoords(&coords[v]);
    for (auto const& material : materials)
        builder.addMaterial(material);
    for (size_t s = 0; s < uvSets.size(); ++s)
        for (size_t u = 0; u + 1 < uvSets[s].coords.size(); u += 2)
            builder.addUVCoords(static_cast<uint32_t>(s), &uvSets[s].coords[u]);
    for (uint32_t f = 0; f < faces; ++f) {
        uint32_t const face = builder.addFace();
        for (uint32_t i = faceOffsets[f]; i < faceOffsets[f + 1]; ++i)
            builder.addFaceVertexIndex(face, indices[i]);
        for (size_t s = 0; s < uvSets.size(); ++s) {
            UVSet const& set = uvSets[s];
            for (uint32_t i = set.faceOffsets[f]; i < set.faceOffsets[f + 1]; ++i)
                builder.addFaceUVIndex(face, static_cast<uint32_t>(s), set.indices[i]);
        }
        if (f < faceMaterials.size() && !materials.empty())
            builder.setFaceMaterialIndex(face, faceMaterials[f]);
    }
    for (uint32_t f = 0; f < faces; ++f)
        for (uint32_t i = holeOffsets[f]; i < holeOffsets[f + 1]; ++i)
            builder.addFaceHoleIndex(f, holes[i]);
    return builder.createSharedAndReset(nullptr);
}

void MeshData::transform(std::array<double, 16> const& m) {
    for (size_t v = 0; v + 2 < coords.size(); v += 3) {
        double const x = coords[v], y = coords[v + 1], z = coords[v + 2];
        coords[v] = m[0] * x + m[4] * y + m[8] * z + m[12];
        coords[v + 1] = m[1] * x + m[5] * y + m[9] * z + m[13];
        coords[v + 2] = m[2] * x + m[6] * y + m[10] * z + m[14];
        double const w = m[3] * x + m[7] * y + m[11] * z + m[15];
        if (w != 1.0 && w != 0.0) {
            coords[v] /= w;
            coords[v + 1] /= w;
            coords[v + 2] /= w;
        }
    }
}

void MeshData::append(MeshData const& other) {
    uint32_t const vertexBase = vertexCount();
    uint32_t const faceBase = faceCount();
    uint32_t const oldFaces = faceBase;

    // Materials: the other's list joins ours, a pointer we have already is reused.
    std::vector<uint32_t> materialMap(other.materials.size());
    for (size_t m = 0; m < other.materials.size(); ++m) {
        uint32_t found = static_cast<uint32_t>(materials.size());
        for (size_t k = 0; k < materials.size(); ++k)
            if (materials[k] == other.materials[m]) {
                found = static_cast<uint32_t>(k);
                break;
            }
        if (found == materials.size())
            materials.push_back(other.materials[m]);
        materialMap[m] = found;
    }

    coords.insert(coords.end(), other.coords.begin(), other.coords.end());
    uint32_t const indexBase = static_cast<uint32_t>(indices.size());
    for (uint32_t i : other.indices)
        indices.push_back(i + vertexBase);
    for (size_t f = 1; f < other.faceOffsets.size(); ++f)
        faceOffsets.push_back(other.faceOffsets[f] + indexBase);

    if (uvSets.size() < other.uvSets.size())
        uvSets.resize(other.uvSets.size());
    for (size_t s = 0; s < uvSets.size(); ++s) {
        UVSet& set = uvSets[s];
        // Sets that one side lacks give its faces empty UV ranges.
        if (set.faceOffsets.size() < size_t(oldFaces) + 1)
            set.faceOffsets.resize(size_t(oldFaces) + 1, static_cast<uint32_t>(set.indices.size()));
        if (s < other.uvSets.size()) {
            UVSet const& from = other.uvSets[s];
            uint32_t const uvBase = static_cast<uint32_t>(set.coords.size() / 2);
            uint32_t const uvIndexBase = static_cast<uint32_t>(set.indices.size());
            set.coords.insert(set.coords.end(), from.coords.begin(), from.coords.end());
            for (uint32_t i : from.indices)
                set.indices.push_back(i + uvBase);
            for (size_t f = 1; f < from.faceOffsets.size(); ++f)
                set.faceOffsets.push_back(from.faceOffsets[f] + uvIndexBase);
        } else {
            set.faceOffsets.resize(set.faceOffsets.size() + other.faceCount(),
                                   static_cast<uint32_t>(set.indices.size()));
        }
    }

    uint32_t const holeBase = static_cast<uint32_t>(holes.size());
    for (uint32_t h : other.holes)
        holes.push_back(h + faceBase);
    for (size_t f = 1; f < other.holeOffsets.size(); ++f)
        holeOffsets.push_back(other.holeOffsets[f] + holeBase);

    for (uint32_t m : other.faceMaterials)
        faceMaterials.push_back(m < materialMap.size() ? materialMap[m] : 0);
}

void MeshData::mergeVertices(double tolerance) {
    std::vector<uint32_t> remap;
    std::vector<double> merged;
    VertexMerger::merge(coords, tolerance, remap, merged);
    coords.swap(merged);

    // Rewrite each face, dropping an index equal to its predecessor (cyclically); the UV index
    // at the same position goes with it.
    std::vector<uint32_t> newIndices;
    newIndices.reserve(indices.size());
    std::vector<uint32_t> newOffsets;
    newOffsets.reserve(faceOffsets.size());
    newOffsets.push_back(0);
    std::vector<std::vector<uint32_t>> newUV(uvSets.size());
    std::vector<std::vector<uint32_t>> newUVOffsets(uvSets.size(), std::vector<uint32_t>{0});
    std::vector<char> keep;
    uint32_t const faces = faceCount();
    for (uint32_t f = 0; f < faces; ++f) {
        uint32_t const begin = faceOffsets[f], end = faceOffsets[f + 1];
        uint32_t const n = end - begin;
        keep.assign(n, 1);
        uint32_t kept = n;
        for (uint32_t k = 0; k < n; ++k) {
            uint32_t const previous = k == 0 ? end - 1 : begin + k - 1;
            if (n > 1 && remap[indices[begin + k]] == remap[indices[previous]]) {
                keep[k] = 0;
                --kept;
            }
        }
        bool const collapse = kept >= 3;
        for (uint32_t k = 0; k < n; ++k)
            if (!collapse || keep[k])
                newIndices.push_back(remap[indices[begin + k]]);
        newOffsets.push_back(static_cast<uint32_t>(newIndices.size()));
        for (size_t s = 0; s < uvSets.size(); ++s) {
            UVSet const& set = uvSets[s];
            uint32_t const ub = set.faceOffsets[f], ue = set.faceOffsets[f + 1];
            for (uint32_t k = 0; k < ue - ub; ++k)
                if (!collapse || keep[k])
                    newUV[s].push_back(set.indices[ub + k]);
            newUVOffsets[s].push_back(static_cast<uint32_t>(newUV[s].size()));
        }
    }
    indices.swap(newIndices);
    faceOffsets.swap(newOffsets);
    for (size_t s = 0; s < uvSets.size(); ++s) {
        uvSets[s].indices.swap(newUV[s]);
        uvSets[s].faceOffsets.swap(newUVOffsets[s]);
    }
}

void MeshData::cleanupUVs() {
    for (UVSet& set : uvSets) {
        size_t const count = set.coords.size() / 2;
        std::vector<uint32_t> remap(count, UINT32_MAX);
        std::vector<double> coordsOut;
        struct PairHash {
            size_t operator()(std::pair<uint64_t, uint64_t> const& p) const {
                return std::hash<uint64_t>()(p.first * 0x9E3779B97F4A7C15ull ^ p.second);
            }
        };
        std::unordered_map<std::pair<uint64_t, uint64_t>, uint32_t, PairHash> seen;
        for (uint32_t& index : set.indices) {
            if (index >= count)
                continue;
            if (remap[index] == UINT32_MAX) {
                double u = set.coords[size_t(index) * 2] + 0.0;
                double v = set.coords[size_t(index) * 2 + 1] + 0.0;
                std::pair<uint64_t, uint64_t> key;
                std::memcpy(&key.first, &u, 8);
                std::memcpy(&key.second, &v, 8);
                auto const found = seen.emplace(key, static_cast<uint32_t>(coordsOut.size() / 2));
                if (found.second) {
                    coordsOut.push_back(u);
                    coordsOut.push_back(v);
                }
                remap[index] = found.first->second;
            }
            index = remap[index];
        }
        set.coords.swap(coordsOut);
    }
}

bool MeshData::isFinite(uint32_t face) const {
    for (uint32_t i = faceOffsets[face]; i < faceOffsets[face + 1]; ++i) {
        double const* p = &coords[size_t(indices[i]) * 3];
        if (!std::isfinite(p[0]) || !std::isfinite(p[1]) || !std::isfinite(p[2]))
            return false;
    }
    return true;
}

uint32_t MeshData::unlinkNonFiniteHoles() {
    uint32_t changed = 0;
    std::vector<uint32_t> newHoles;
    std::vector<uint32_t> newOffsets{0};
    for (uint32_t f = 0; f < faceCount(); ++f) {
        uint32_t const begin = holeOffsets[f], end = holeOffsets[f + 1];
        bool finite = isFinite(f);
        for (uint32_t h = begin; h < end && finite; ++h)
            finite = isFinite(holes[h]);
        if (finite)
            newHoles.insert(newHoles.end(), holes.begin() + begin, holes.begin() + end);
        else
            ++changed;
        newOffsets.push_back(static_cast<uint32_t>(newHoles.size()));
    }
    holes.swap(newHoles);
    holeOffsets.swap(newOffsets);
    return changed;
}

} // namespace koltx
