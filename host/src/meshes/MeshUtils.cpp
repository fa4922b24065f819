#include "koltx/MeshUtils.h"

#include "koltx/MeshBuilder.h"

#include "FaceTriangulator.h"
#include "MeshData.h"

#include <GL/glu.h>

#include <algorithm>
#include <cmath>
#include <deque>
#include <string>
#include <vector>

namespace koltx {

namespace {

constexpr uint32_t NO_UV = UINT32_MAX;

// One corner handed to the tesselator: a vertex of the output mesh with its position and, per
// UV set, its UV index and value (NO_UV where the set has none).
struct Corner {
    double projected[3];
    double position[3];
    uint32_t vertex;
    std::vector<uint32_t> uvIndices;
    std::vector<double> uvValues;
};

// Tesselation of one face and its holes into triangles of the output builder.
class HoleTesselator {
public:
    HoleTesselator(Mesh const& mesh, MeshBuilder& builder)
        : mesh(mesh), builder(builder), uvSetCount(mesh.getUVSetCount()) {}
    HoleTesselator(HoleTesselator const&) = delete;
    HoleTesselator& operator=(HoleTesselator const&) = delete;
    ~HoleTesselator() {
        if (tess != nullptr)
            gluDeleteTess(tess);
    }

    // Appends the triangles of `face`; false if the tesselator failed or the face is flat. On
    // failure some vertices may have been added to the builder, but no face.
    bool run(uint32_t face, uint32_t material);

private:
    static void onBegin(GLenum, void*) {}
    static void onEdgeFlag(GLboolean, void*) {}
    static void onEnd(void*) {}
    static void onVertex(void* vertex, void* self);
    static void onCombine(GLdouble coords[3], void* data[4], GLfloat weight[4], void** out,
                          void* self);
    static void onError(GLenum, void* self) { static_cast<HoleTesselator*>(self)->failed = true; }

    void addRing(uint32_t face);
    bool ringIsFinite(uint32_t face) const;
    bool prepare();

    Mesh const& mesh;
    MeshBuilder& builder;
    uint32_t uvSetCount;
    std::vector<bool> carried;
    int dropAxis = 2;
    double normal[3] = {0, 0, 0};
    std::deque<Corner> corners; // a deque keeps the addresses that GLU holds
    std::vector<Corner const*> triangles;
    bool failed = false;
    GLUtesselator* tess = nullptr; // made once per mesh: creating one costs more than a face
};

bool HoleTesselator::ringIsFinite(uint32_t face) const {
    uint32_t const count = mesh.getFaceVertexCount(face);
    uint32_t const* vertices = mesh.getFaceVertexIndices(face);
    auto const& coords = mesh.getVertexCoords();
    for (uint32_t i = 0; i < count; ++i)
        for (int a = 0; a < 3; ++a)
            if (!std::isfinite(coords[size_t(vertices[i]) * 3 + a]))
                return false;
    return true;
}

void HoleTesselator::addRing(uint32_t face) {
    uint32_t const count = mesh.getFaceVertexCount(face);
    uint32_t const* vertices = mesh.getFaceVertexIndices(face);
    auto const& coords = mesh.getVertexCoords();
    gluTessBeginContour(tess);
    for (uint32_t i = 0; i < count; ++i) {
        Corner corner;
        double const* xyz = coords.data() + size_t(vertices[i]) * 3;
        int axis = 0;
        for (int a = 0; a < 3; ++a) {
            corner.position[a] = xyz[a];
            if (a != dropAxis)
                corner.projected[axis++] = xyz[a];
        }
        corner.projected[2] = 0.0;
        corner.vertex = vertices[i];
        corner.uvIndices.assign(uvSetCount, NO_UV);
        corner.uvValues.assign(size_t(uvSetCount) * 2, 0.0);
        for (uint32_t set = 0; set < uvSetCount; ++set) {
            if (!carried[set])
                continue;
            uint32_t const uv = mesh.getFaceUVIndices(face, set)[i];
            corner.uvIndices[set] = uv;
            corner.uvValues[set * 2] = mesh.getUVCoords(set)[size_t(uv) * 2];
            corner.uvValues[set * 2 + 1] = mesh.getUVCoords(set)[size_t(uv) * 2 + 1];
        }
        corners.push_back(std::move(corner));
        gluTessVertex(tess, corners.back().projected, &corners.back());
    }
    gluTessEndContour(tess);
}

bool HoleTesselator::prepare() {
    if (tess != nullptr)
        return true;
    tess = gluNewTess();
    if (tess == nullptr)
        return false;
    using Callback = _GLUfuncptr;
    gluTessCallback(tess, GLU_TESS_BEGIN_DATA, reinterpret_cast<Callback>(&onBegin));
    // With an edge flag callback, GLU hands out separate triangles only.
    gluTessCallback(tess, GLU_TESS_EDGE_FLAG_DATA, reinterpret_cast<Callback>(&onEdgeFlag));
    gluTessCallback(tess, GLU_TESS_VERTEX_DATA, reinterpret_cast<Callback>(&onVertex));
    gluTessCallback(tess, GLU_TESS_END_DATA, reinterpret_cast<Callback>(&onEnd));
    gluTessCallback(tess, GLU_TESS_COMBINE_DATA, reinterpret_cast<Callback>(&onCombine));
    gluTessCallback(tess, GLU_TESS_ERROR_DATA, reinterpret_cast<Callback>(&onError));
    gluTessProperty(tess, GLU_TESS_WINDING_RULE, GLU_TESS_WINDING_ODD);
    gluTessNormal(tess, 0.0, 0.0, 1.0);
    return true;
}

bool HoleTesselator::run(uint32_t face, uint32_t material) {
    // GLU crashes on coordinates that are not finite, so such faces never reach it.
    uint32_t const holeCount = mesh.getFaceHoleCount(face);
    uint32_t const* holes = mesh.getFaceHoleIndices(face);
    if (!ringIsFinite(face))
        return false;
    for (uint32_t h = 0; h < holeCount; ++h)
        if (!ringIsFinite(holes[h]))
            return false;
    MeshUtils::faceNormal(mesh, face, normal);
    double const ax = std::fabs(normal[0]), ay = std::fabs(normal[1]), az = std::fabs(normal[2]);
    if (!std::isfinite(ax + ay + az) || (ax == 0.0 && ay == 0.0 && az == 0.0))
        return false;
    // Project onto the plane where the polygon shows the largest area.
    dropAxis = ax >= ay && ax >= az ? 0 : (ay >= az ? 1 : 2);

    // A UV set is carried only if the face and every hole have UVs in it.
    carried.assign(uvSetCount, true);
    for (uint32_t set = 0; set < uvSetCount; ++set) {
        bool complete = mesh.getFaceUVCount(face, set) > 0;
        for (uint32_t h = 0; h < holeCount; ++h)
            complete = complete && mesh.getFaceUVCount(holes[h], set) > 0;
        carried[set] = complete;
    }

    corners.clear();
    triangles.clear();
    failed = false;
    if (!prepare())
        return false;
    gluTessBeginPolygon(tess, this);
    addRing(face);
    for (uint32_t h = 0; h < holeCount; ++h)
        addRing(holes[h]);
    gluTessEndPolygon(tess);
    if (failed) {
        // After an error the tesselator's state is not to be trusted; the next face gets a new one.
        gluDeleteTess(tess);
        tess = nullptr;
    }
    if (failed || triangles.empty() || triangles.size() % 3 != 0)
        return false;

    for (size_t t = 0; t < triangles.size(); t += 3) {
        Corner const* a = triangles[t];
        Corner const* b = triangles[t + 1];
        Corner const* c = triangles[t + 2];
        // Keep the face's orientation: the projection may have mirrored it.
        double const u[3] = {b->position[0] - a->position[0], b->position[1] - a->position[1],
                             b->position[2] - a->position[2]};
        double const v[3] = {c->position[0] - a->position[0], c->position[1] - a->position[1],
                             c->position[2] - a->position[2]};
        double const cross[3] = {u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2],
                                 u[0] * v[1] - u[1] * v[0]};
        if (cross[0] * normal[0] + cross[1] * normal[1] + cross[2] * normal[2] < 0.0)
            std::swap(b, c);
        uint32_t const triangle = builder.addFace();
        builder.setFaceMaterialIndex(triangle, material);
        for (Corner const* corner : {a, b, c}) {
            builder.addFaceVertexIndex(triangle, corner->vertex);
            for (uint32_t set = 0; set < uvSetCount; ++set)
                if (carried[set])
                    builder.addFaceUVIndex(triangle, set, corner->uvIndices[set]);
        }
    }
    return true;
}

void HoleTesselator::onVertex(void* vertex, void* self) {
    static_cast<HoleTesselator*>(self)->triangles.push_back(static_cast<Corner const*>(vertex));
}

// A new vertex where edges cross. GLU's weights are floats, so where the first two neighbours are
// the ends of one edge (as for every crossing), position and UVs are interpolated along that edge
// from the exact crossing point; otherwise by the normalised weights.
void HoleTesselator::onCombine(GLdouble coords[3], void* data[4], GLfloat weight[4], void** out,
                               void* self) {
    auto* tesselator = static_cast<HoleTesselator*>(self);
    uint32_t const sets = tesselator->uvSetCount;
    Corner corner;
    corner.projected[0] = coords[0];
    corner.projected[1] = coords[1];
    corner.projected[2] = coords[2];
    corner.uvIndices.assign(sets, NO_UV);
    corner.uvValues.assign(size_t(sets) * 2, 0.0);

    Corner const* sources[4];
    double weights[4];
    double total = 0.0;
    for (int i = 0; i < 4; ++i) {
        sources[i] = static_cast<Corner const*>(data[i]);
        weights[i] = sources[i] != nullptr ? weight[i] : 0.0;
        total += weights[i];
    }
    Corner const* a = sources[0];
    Corner const* b = sources[1];
    double const dx = a && b ? b->projected[0] - a->projected[0] : 0.0;
    double const dy = a && b ? b->projected[1] - a->projected[1] : 0.0;
    double const length2 = dx * dx + dy * dy;
    if (length2 > 0.0) {
        double const t =
            ((coords[0] - a->projected[0]) * dx + (coords[1] - a->projected[1]) * dy) / length2;
        std::fill(weights, weights + 4, 0.0);
        weights[0] = 1.0 - t;
        weights[1] = t;
    } else if (total > 0.0) {
        for (double& w : weights)
            w /= total;
    }
    corner.position[0] = corner.position[1] = corner.position[2] = 0.0;
    for (int i = 0; i < 4; ++i) {
        if (sources[i] == nullptr || weights[i] == 0.0)
            continue;
        for (int axis = 0; axis < 3; ++axis)
            corner.position[axis] += weights[i] * sources[i]->position[axis];
        for (size_t k = 0; k < corner.uvValues.size(); ++k)
            corner.uvValues[k] += weights[i] * sources[i]->uvValues[k];
    }
    corner.vertex = tesselator->builder.addVertexCoords(corner.position);
    for (uint32_t set = 0; set < sets; ++set)
        if (tesselator->carried[set])
            corner.uvIndices[set] =
                tesselator->builder.addUVCoords(set, corner.uvValues.data() + set * 2);
    tesselator->corners.push_back(std::move(corner));
    *out = &tesselator->corners.back();
}

// Copies a face without its holes.
void copyFace(Mesh const& mesh, MeshBuilder& builder, uint32_t face) {
    uint32_t const target = builder.addFace();
    builder.setFaceMaterialIndex(target, mesh.getFaceMaterialIndices()[face]);
    uint32_t const count = mesh.getFaceVertexCount(face);
    uint32_t const* vertices = mesh.getFaceVertexIndices(face);
    for (uint32_t i = 0; i < count; ++i)
        builder.addFaceVertexIndex(target, vertices[i]);
    for (uint32_t set = 0; set < mesh.getUVSetCount(); ++set) {
        uint32_t const uvCount = mesh.getFaceUVCount(face, set);
        uint32_t const* uvs = mesh.getFaceUVIndices(face, set);
        for (uint32_t i = 0; i < uvCount; ++i)
            builder.addFaceUVIndex(target, set, uvs[i]);
    }
}

} // namespace

std::shared_ptr<Mesh> MeshUtils::triangulateHoles(std::shared_ptr<Mesh> const& mesh,
                                                  std::wstring* warnings) {
    if (!mesh || !mesh->hasHoles())
        return mesh;
    Mesh const& source = *mesh;
    MeshBuilder builder;
    builder.setName(source.getName());
    builder.reserve(source.getVertexCount(), source.getFaceCount(),
                    source.getVertexIndices().size());
    auto const& coords = source.getVertexCoords();
    for (size_t v = 0; v < coords.size(); v += 3)
        builder.addVertexCoords(coords.data() + v);
    for (uint32_t set = 0; set < source.getUVSetCount(); ++set) {
        auto const& uvs = source.getUVCoords(set);
        for (size_t i = 0; i < uvs.size(); i += 2)
            builder.addUVCoords(set, uvs.data() + i);
    }
    for (auto const& material : source.getMaterials())
        builder.addMaterial(material);

    HoleTesselator tesselator(source, builder);
    for (uint32_t face = 0; face < source.getFaceCount(); ++face) {
        if (source.isHoleFace(face))
            continue;
        if (source.getFaceHoleCount(face) == 0) {
            copyFace(source, builder, face);
            continue;
        }
        uint32_t const material = source.getFaceMaterialIndices()[face];
        if (!tesselator.run(face, material)) {
            copyFace(source, builder, face);
            if (warnings != nullptr)
                *warnings += L"Face " + std::to_wstring(face) + L" of mesh '" + source.getName() +
                             L"' could not be triangulated; its holes were dropped.\n";
        }
    }
    return builder.createSharedAndReset(warnings);
}

std::shared_ptr<Mesh> MeshUtils::triangulate(std::shared_ptr<Mesh> const& mesh,
                                             std::wstring* warnings) {
    if (!mesh)
        return mesh;
    MeshData data = MeshData::fromMesh(*triangulateHoles(mesh, warnings));
    FaceTriangulator::triangulate(data, warnings);
    return data.toMesh();
}

void MeshUtils::faceNormal(Mesh const& mesh, uint32_t face, double* normal) {
    normal[0] = normal[1] = normal[2] = 0.0;
    uint32_t const count = mesh.getFaceVertexCount(face);
    uint32_t const* vertices = mesh.getFaceVertexIndices(face);
    auto const& coords = mesh.getVertexCoords();
    for (uint32_t i = 0; i < count; ++i) {
        double const* p = coords.data() + size_t(vertices[i]) * 3;
        double const* q = coords.data() + size_t(vertices[(i + 1) % count]) * 3;
        normal[0] += (p[1] - q[1]) * (p[2] + q[2]);
        normal[1] += (p[2] - q[2]) * (p[0] + q[0]);
        normal[2] += (p[0] - q[0]) * (p[1] + q[1]);
    }
}

double MeshUtils::faceArea(Mesh const& mesh, uint32_t face) {
    double normal[3];
    faceNormal(mesh, face, normal);
    return 0.5 * std::sqrt(normal[0] * normal[0] + normal[1] * normal[1] + normal[2] * normal[2]);
}

double MeshUtils::surfaceArea(Mesh const& mesh) {
    double total = 0.0;
    for (uint32_t face = 0; face < mesh.getFaceCount(); ++face) {
        if (mesh.isHoleFace(face))
            continue;
        total += faceArea(mesh, face);
        uint32_t const holeCount = mesh.getFaceHoleCount(face);
        uint32_t const* holes = mesh.getFaceHoleIndices(face);
        for (uint32_t h = 0; h < holeCount; ++h)
            total -= faceArea(mesh, holes[h]);
    }
    return total;
}

} // namespace koltx
