#include "FaceTriangulator.h"

#include <GL/glu.h>

#include <array>
#include <cmath>
#include <deque>
#include <string>
#include <vector>

namespace koltx {

namespace {

#ifndef CALLBACK
#define CALLBACK
#endif

// One point given to or made by the tesselator. Its UVs live in the state's flat arrays at
// `slot` (one entry per kept UV set), so that points own no memory of their own.
struct TessPoint {
    std::array<GLdouble, 3> xyz;
    uint32_t vertex; // index in the mesh
    uint32_t slot;
};

// Everything one face needs, reused from face to face: no allocation per face once warm.
struct TessState {
    MeshData* mesh = nullptr;
    std::vector<size_t> sets;     // kept UV sets of the current face
    std::vector<TessPoint> given; // the face's corners, fixed in place while the tesselator runs
    std::deque<TessPoint> created;
    std::vector<double> uvs;               // u, v per kept set, per slot
    std::vector<uint32_t> uvIx;            // UV index per kept set, per slot
    std::vector<TessPoint const*> corners; // three per triangle
    bool failed = false;

    uint32_t slots = 0;

    void startFace() {
        given.clear();
        created.clear();
        uvs.clear();
        uvIx.clear();
        corners.clear();
        slots = 0;
        failed = false;
    }
    // Room for one more point's UVs, zeroed.
    uint32_t newSlot() {
        ++slots;
        uvs.resize(size_t(slots) * sets.size() * 2, 0.0);
        uvIx.resize(size_t(slots) * sets.size(), 0);
        return slots - 1;
    }
};

void CALLBACK onBegin(GLenum, void*) {}
void CALLBACK onEdgeFlag(GLboolean, void*) {}
void CALLBACK onEnd(void*) {}

void CALLBACK onVertex(void* vertex, void* user) {
    static_cast<TessState*>(user)->corners.push_back(static_cast<TessPoint const*>(vertex));
}

void CALLBACK onCombine(GLdouble coords[3], void* data[4], GLfloat weight[4], void** out,
                        void* user) {
    auto* state = static_cast<TessState*>(user);
    MeshData& mesh = *state->mesh;
    TessPoint point;
    point.xyz = {coords[0], coords[1], coords[2]};
    point.vertex = mesh.vertexCount();
    point.slot = state->newSlot();
    mesh.coords.insert(mesh.coords.end(), coords, coords + 3);
    size_t const setCount = state->sets.size();
    double* uv = state->uvs.data() + size_t(point.slot) * setCount * 2;
    for (int k = 0; k < 4; ++k) {
        auto const* source = static_cast<TessPoint const*>(data[k]);
        if (source == nullptr)
            continue;
        double const* from = state->uvs.data() + size_t(source->slot) * setCount * 2;
        for (size_t s = 0; s < setCount; ++s) {
            uv[s * 2] += weight[k] * from[s * 2];
            uv[s * 2 + 1] += weight[k] * from[s * 2 + 1];
        }
    }
    for (size_t s = 0; s < setCount; ++s) {
        auto& set = mesh.uvSets[state->sets[s]];
        state->uvIx[size_t(point.slot) * setCount + s] =
            static_cast<uint32_t>(set.coords.size() / 2);
        set.coords.push_back(uv[s * 2]);
        set.coords.push_back(uv[s * 2 + 1]);
    }
    state->created.push_back(point);
    *out = &state->created.back();
}

void CALLBACK onError(GLenum, void* user) {
    static_cast<TessState*>(user)->failed = true;
}

using Callback = void(CALLBACK*)();

} // namespace

void FaceTriangulator::triangulate(MeshData& mesh, std::wstring* warnings) {
    uint32_t const faces = mesh.faceCount();
    // Room for every face of n corners as n - 2 triangles.
    size_t indexCount = 0, faceCount = 0;
    for (uint32_t f = 0; f < faces; ++f) {
        uint32_t const n = mesh.faceOffsets[f + 1] - mesh.faceOffsets[f];
        indexCount += n > 3 ? 3 * size_t(n - 2) : n;
        faceCount += n > 3 ? n - 2 : 1;
    }
    if (faceCount == faces)
        return;

    GLUtesselator* tess = gluNewTess();
    if (tess == nullptr) {
        if (warnings != nullptr)
            *warnings += L"Triangulation: no tesselator available\n";
        return;
    }
    gluTessCallback(tess, GLU_TESS_BEGIN_DATA, reinterpret_cast<Callback>(&onBegin));
    gluTessCallback(tess, GLU_TESS_EDGE_FLAG_DATA, reinterpret_cast<Callback>(&onEdgeFlag));
    gluTessCallback(tess, GLU_TESS_VERTEX_DATA, reinterpret_cast<Callback>(&onVertex));
    gluTessCallback(tess, GLU_TESS_END_DATA, reinterpret_cast<Callback>(&onEnd));
    gluTessCallback(tess, GLU_TESS_COMBINE_DATA, reinterpret_cast<Callback>(&onCombine));
    gluTessCallback(tess, GLU_TESS_ERROR_DATA, reinterpret_cast<Callback>(&onError));
    gluTessProperty(tess, GLU_TESS_WINDING_RULE, GLU_TESS_WINDING_ODD);

    MeshData out;
    out.name = mesh.name;
    out.materials = mesh.materials;
    out.uvSets.resize(mesh.uvSets.size());
    out.indices.reserve(indexCount);
    out.faceOffsets.reserve(faceCount + 1);
    out.holeOffsets.reserve(faceCount + 1);
    out.faceMaterials.reserve(faceCount);
    for (auto& set : out.uvSets)
        set.faceOffsets.reserve(faceCount + 1);

    auto endFace = [&](uint32_t material) {
        out.faceOffsets.push_back(static_cast<uint32_t>(out.indices.size()));
        for (auto& set : out.uvSets)
            set.faceOffsets.push_back(static_cast<uint32_t>(set.indices.size()));
        out.holeOffsets.push_back(0);
        out.faceMaterials.push_back(material);
    };

    TessState state;
    state.mesh = &mesh;
    std::vector<int> keptAt(mesh.uvSets.size()); // position among the kept sets, or -1
    for (uint32_t f = 0; f < faces; ++f) {
        uint32_t const begin = mesh.faceOffsets[f], end = mesh.faceOffsets[f + 1];
        uint32_t const material = f < mesh.faceMaterials.size() ? mesh.faceMaterials[f] : 0;
        auto original = [&]() {
            out.indices.insert(out.indices.end(), mesh.indices.begin() + begin,
                               mesh.indices.begin() + end);
            for (size_t s = 0; s < mesh.uvSets.size(); ++s) {
                auto const& from = mesh.uvSets[s];
                out.uvSets[s].indices.insert(out.uvSets[s].indices.end(),
                                             from.indices.begin() + from.faceOffsets[f],
                                             from.indices.begin() + from.faceOffsets[f + 1]);
            }
            endFace(material);
        };
        if (end - begin <= 3) {
            original();
            continue;
        }
        if (!mesh.isFinite(f)) {
            if (warnings != nullptr)
                *warnings += L"Triangulation: face " + std::to_wstring(f) +
                             L" has coordinates that are not finite and stays whole\n";
            original();
            continue;
        }

        state.sets.clear();
        for (size_t s = 0; s < mesh.uvSets.size(); ++s) {
            keptAt[s] = -1;
            if (mesh.uvSets[s].faceOffsets[f + 1] > mesh.uvSets[s].faceOffsets[f]) {
                keptAt[s] = static_cast<int>(state.sets.size());
                state.sets.push_back(s);
            }
        }
        size_t const setCount = state.sets.size();
        state.startFace();
        state.given.resize(end - begin);
        double normal[3] = {0, 0, 0};
        for (uint32_t k = 0; k < end - begin; ++k) {
            TessPoint& point = state.given[k];
            point.vertex = mesh.indices[begin + k];
            point.slot = state.newSlot();
            double const* p = &mesh.coords[size_t(point.vertex) * 3];
            point.xyz = {p[0], p[1], p[2]};
            for (size_t j = 0; j < setCount; ++j) {
                auto const& set = mesh.uvSets[state.sets[j]];
                uint32_t const uv = set.indices[set.faceOffsets[f] + k];
                state.uvIx[size_t(point.slot) * setCount + j] = uv;
                state.uvs[(size_t(point.slot) * setCount + j) * 2] = set.coords[size_t(uv) * 2];
                state.uvs[(size_t(point.slot) * setCount + j) * 2 + 1] =
                    set.coords[size_t(uv) * 2 + 1];
            }
            double const* q =
                &mesh.coords[size_t(mesh.indices[begin + (k + 1) % (end - begin)]) * 3];
            normal[0] += (p[1] - q[1]) * (p[2] + q[2]);
            normal[1] += (p[2] - q[2]) * (p[0] + q[0]);
            normal[2] += (p[0] - q[0]) * (p[1] + q[1]);
        }
        gluTessNormal(tess, normal[0], normal[1], normal[2]);
        gluTessBeginPolygon(tess, &state);
        gluTessBeginContour(tess);
        for (TessPoint& point : state.given)
            gluTessVertex(tess, point.xyz.data(), &point);
        gluTessEndContour(tess);
        gluTessEndPolygon(tess);

        size_t const triangles = state.corners.size() / 3;
        if (state.failed || triangles == 0) {
            if (warnings != nullptr)
                *warnings += L"Triangulation: face " + std::to_wstring(f) + L" kept whole\n";
            original();
            continue;
        }
        for (size_t t = 0; t < triangles; ++t) {
            TessPoint const* const* corner = state.corners.data() + t * 3;
            for (int k = 0; k < 3; ++k)
                out.indices.push_back(corner[k]->vertex);
            for (size_t s = 0; s < out.uvSets.size(); ++s) {
                if (keptAt[s] < 0)
                    continue;
                for (int k = 0; k < 3; ++k)
                    out.uvSets[s].indices.push_back(
                        state.uvIx[size_t(corner[k]->slot) * setCount + size_t(keptAt[s])]);
            }
            endFace(material);
        }
    }
    gluDeleteTess(tess);

    out.coords = std::move(mesh.coords);
    for (size_t s = 0; s < mesh.uvSets.size(); ++s)
        out.uvSets[s].coords = std::move(mesh.uvSets[s].coords);
    mesh = std::move(out);
}

} // namespace koltx
