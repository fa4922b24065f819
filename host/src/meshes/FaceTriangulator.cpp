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

// One point given to or made by the tesselator.
struct TessPoint {
    std::array<GLdouble, 3> xyz;
    uint32_t vertex;            // index in the mesh
    std::vector<double> uvs;    // u, v per kept UV set, used for new points
    std::vector<uint32_t> uvIx; // UV index per kept UV set
};

struct TessState {
    MeshData* mesh = nullptr;
    std::vector<size_t> const* sets = nullptr;
    std::deque<TessPoint> created;
    std::vector<TessPoint*> triangle;
    std::vector<std::array<TessPoint*, 3>> triangles;
    bool failed = false;
};

void CALLBACK onBegin(GLenum, void*) {}
void CALLBACK onEdgeFlag(GLboolean, void*) {}
void CALLBACK onEnd(void*) {}

void CALLBACK onVertex(void* vertex, void* user) {
    auto* state = static_cast<TessState*>(user);
    state->triangle.push_back(static_cast<TessPoint*>(vertex));
    if (state->triangle.size() == 3) {
        state->triangles.push_back({state->triangle[0], state->triangle[1], state->triangle[2]});
        state->triangle.clear();
    }
}

void CALLBACK onCombine(GLdouble coords[3], void* data[4], GLfloat weight[4], void** out,
                        void* user) {
    auto* state = static_cast<TessState*>(user);
    MeshData& mesh = *state->mesh;
    TessPoint point;
    point.xyz = {coords[0], coords[1], coords[2]};
    point.vertex = mesh.vertexCount();
    mesh.coords.insert(mesh.coords.end(), coords, coords + 3);
    size_t const setCount = state->sets->size();
    point.uvs.assign(setCount * 2, 0.0);
    for (int k = 0; k < 4; ++k) {
        auto const* source = static_cast<TessPoint*>(data[k]);
        if (source == nullptr)
            continue;
        for (size_t s = 0; s < setCount; ++s) {
            point.uvs[s * 2] += weight[k] * source->uvs[s * 2];
            point.uvs[s * 2 + 1] += weight[k] * source->uvs[s * 2 + 1];
        }
    }
    for (size_t s = 0; s < setCount; ++s) {
        auto& set = mesh.uvSets[(*state->sets)[s]];
        point.uvIx.push_back(static_cast<uint32_t>(set.coords.size() / 2));
        set.coords.push_back(point.uvs[s * 2]);
        set.coords.push_back(point.uvs[s * 2 + 1]);
    }
    state->created.push_back(std::move(point));
    *out = &state->created.back();
}

void CALLBACK onError(GLenum, void* user) {
    static_cast<TessState*>(user)->failed = true;
}

using Callback = void(CALLBACK*)();

} // namespace

void FaceTriangulator::triangulate(MeshData& mesh, std::wstring* warnings) {
    uint32_t const faces = mesh.faceCount();
    bool any = false;
    for (uint32_t f = 0; f < faces && !any; ++f)
        any = mesh.faceOffsets[f + 1] - mesh.faceOffsets[f] > 3;
    if (!any)
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

    auto emit = [&](std::vector<uint32_t> const& vertices,
                    std::vector<std::vector<uint32_t>> const& uvs, uint32_t material) {
        out.indices.insert(out.indices.end(), vertices.begin(), vertices.end());
        out.faceOffsets.push_back(static_cast<uint32_t>(out.indices.size()));
        for (size_t s = 0; s < out.uvSets.size(); ++s) {
            out.uvSets[s].indices.insert(out.uvSets[s].indices.end(), uvs[s].begin(), uvs[s].end());
            out.uvSets[s].faceOffsets.push_back(
                static_cast<uint32_t>(out.uvSets[s].indices.size()));
        }
        out.holeOffsets.push_back(0);
        out.faceMaterials.push_back(material);
    };

    for (uint32_t f = 0; f < faces; ++f) {
        uint32_t const begin = mesh.faceOffsets[f], end = mesh.faceOffsets[f + 1];
        uint32_t const material = f < mesh.faceMaterials.size() ? mesh.faceMaterials[f] : 0;
        std::vector<size_t> sets;
        for (size_t s = 0; s < mesh.uvSets.size(); ++s)
            if (mesh.uvSets[s].faceOffsets[f + 1] > mesh.uvSets[s].faceOffsets[f])
                sets.push_back(s);
        auto original = [&]() {
            std::vector<uint32_t> vertices(mesh.indices.begin() + begin,
                                           mesh.indices.begin() + end);
            std::vector<std::vector<uint32_t>> uvs(mesh.uvSets.size());
            for (size_t s : sets)
                uvs[s].assign(mesh.uvSets[s].indices.begin() + mesh.uvSets[s].faceOffsets[f],
                              mesh.uvSets[s].indices.begin() + mesh.uvSets[s].faceOffsets[f + 1]);
            emit(vertices, uvs, material);
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

        TessState state;
        state.mesh = &mesh;
        state.sets = &sets;
        std::vector<TessPoint> points(end - begin);
        double normal[3] = {0, 0, 0};
        for (uint32_t k = 0; k < end - begin; ++k) {
            TessPoint& point = points[k];
            point.vertex = mesh.indices[begin + k];
            double const* p = &mesh.coords[size_t(point.vertex) * 3];
            point.xyz = {p[0], p[1], p[2]};
            for (size_t s : sets) {
                uint32_t const uv = mesh.uvSets[s].indices[mesh.uvSets[s].faceOffsets[f] + k];
                point.uvIx.push_back(uv);
                point.uvs.push_back(mesh.uvSets[s].coords[size_t(uv) * 2]);
                point.uvs.push_back(mesh.uvSets[s].coords[size_t(uv) * 2 + 1]);
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
        for (TessPoint& point : points)
            gluTessVertex(tess, point.xyz.data(), &point);
        gluTessEndContour(tess);
        gluTessEndPolygon(tess);

        if (state.failed || state.triangles.empty()) {
            if (warnings != nullptr)
                *warnings += L"Triangulation: face " + std::to_wstring(f) + L" kept whole\n";
            original();
            continue;
        }
        for (auto const& triangle : state.triangles) {
            std::vector<uint32_t> vertices;
            std::vector<std::vector<uint32_t>> uvs(mesh.uvSets.size());
            for (TessPoint const* point : triangle) {
                vertices.push_back(point->vertex);
                for (size_t s = 0; s < sets.size(); ++s)
                    uvs[sets[s]].push_back(point->uvIx[s]);
            }
            emit(vertices, uvs, material);
        }
    }
    gluDeleteTess(tess);

    out.coords = std::move(mesh.coords);
    for (size_t s = 0; s < mesh.uvSets.size(); ++s)
        out.uvSets[s].coords = std::move(mesh.uvSets[s].coords);
    mesh = std::move(out);
}

} // namespace koltx
