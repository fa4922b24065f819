#include "HoleBridger.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace koltx {

namespace {

struct Corner {
    uint32_t vertex;
    std::vector<uint32_t> uvs; // one per UV set that the face keeps
};

using Ring = std::vector<Corner>;

struct Point {
    double x, y;
};

double cross(Point a, Point b, Point c) {
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

bool samePoint(Point a, Point b) {
    return a.x == b.x && a.y == b.y;
}

// True if the open segments ab and cd cross; touching at shared end points does not count.
bool crosses(Point a, Point b, Point c, Point d) {
    if (samePoint(a, c) || samePoint(a, d) || samePoint(b, c) || samePoint(b, d))
        return false;
    double const d1 = cross(a, b, c), d2 = cross(a, b, d);
    double const d3 = cross(c, d, a), d4 = cross(c, d, b);
    if (((d1 > 0 && d2 < 0) || (d1 < 0 && d2 > 0)) && ((d3 > 0 && d4 < 0) || (d3 < 0 && d4 > 0)))
        return true;
    auto onSegment = [](Point p, Point q, Point r) {
        return std::min(p.x, q.x) <= r.x && r.x <= std::max(p.x, q.x) &&
               std::min(p.y, q.y) <= r.y && r.y <= std::max(p.y, q.y);
    };
    return (d1 == 0 && onSegment(a, b, c)) || (d2 == 0 && onSegment(a, b, d)) ||
           (d3 == 0 && onSegment(c, d, a)) || (d4 == 0 && onSegment(c, d, b));
}

class Projection {
public:
    Projection(MeshData const& mesh, Ring const& ring) : coords(mesh.coords) {
        double n[3] = {0, 0, 0};
        for (size_t i = 0; i < ring.size(); ++i) {
            double const* a = &coords[size_t(ring[i].vertex) * 3];
            double const* b = &coords[size_t(ring[(i + 1) % ring.size()].vertex) * 3];
            n[0] += (a[1] - b[1]) * (a[2] + b[2]);
            n[1] += (a[2] - b[2]) * (a[0] + b[0]);
            n[2] += (a[0] - b[0]) * (a[1] + b[1]);
        }
        int drop = 0;
        if (std::fabs(n[1]) > std::fabs(n[drop]))
            drop = 1;
        if (std::fabs(n[2]) > std::fabs(n[drop]))
            drop = 2;
        u = (drop + 1) % 3;
        v = (drop + 2) % 3;
    }
    Point operator()(uint32_t vertex) const {
        return Point{coords[size_t(vertex) * 3 + u], coords[size_t(vertex) * 3 + v]};
    }
    double signedArea(Ring const& ring) const {
        double area = 0;
        for (size_t i = 0; i < ring.size(); ++i) {
            Point const a = (*this)(ring[i].vertex),
                        b = (*this)(ring[(i + 1) % ring.size()].vertex);
            area += a.x * b.y - b.x * a.y;
        }
        return area / 2;
    }

private:
    std::vector<double> const& coords;
    int u, v;
};

Ring readRing(MeshData const& mesh, uint32_t face, std::vector<size_t> const& sets) {
    Ring ring;
    uint32_t const begin = mesh.faceOffsets[face], end = mesh.faceOffsets[face + 1];
    for (uint32_t i = begin; i < end; ++i) {
        Corner corner{mesh.indices[i], {}};
        for (size_t s : sets)
            corner.uvs.push_back(
                mesh.uvSets[s].indices[mesh.uvSets[s].faceOffsets[face] + (i - begin)]);
        ring.push_back(std::move(corner));
    }
    return ring;
}

bool hasUVs(MeshData const& mesh, size_t set, uint32_t face) {
    auto const& offsets = mesh.uvSets[set].faceOffsets;
    return offsets[face + 1] > offsets[face];
}

Ring bridgeFace(MeshData const& mesh, uint32_t face, std::vector<uint32_t> const& holeFaces,
                std::vector<size_t> const& sets) {
    Ring ring = readRing(mesh, face, sets);
    Projection const project(mesh, ring);
    double const outerSense = project.signedArea(ring);

    std::vector<Ring> holes;
    for (uint32_t h : holeFaces) {
        Ring hole = readRing(mesh, h, sets);
        if (hole.empty())
            continue;
        if ((project.signedArea(hole) > 0) == (outerSense > 0))
            std::reverse(hole.begin(), hole.end());
        holes.push_back(std::move(hole));
    }
    auto farthest = [&](Ring const& hole) {
        size_t best = 0;
        for (size_t i = 1; i < hole.size(); ++i)
            if (project(hole[i].vertex).x > project(hole[best].vertex).x)
                best = i;
        return best;
    };
    // Holes farthest along the axis first, so later bridges see the earlier ones as ring edges.
    std::sort(holes.begin(), holes.end(), [&](Ring const& a, Ring const& b) {
        return project(a[farthest(a)].vertex).x > project(b[farthest(b)].vertex).x;
    });

    for (size_t h = 0; h < holes.size(); ++h) {
        Ring const& hole = holes[h];
        size_t const m = farthest(hole);
        Point const pm = project(hole[m].vertex);

        std::vector<size_t> order(ring.size());
        for (size_t i = 0; i < order.size(); ++i)
            order[i] = i;
        auto distance = [&](size_t i) {
            Point const p = project(ring[i].vertex);
            return (p.x - pm.x) * (p.x - pm.x) + (p.y - pm.y) * (p.y - pm.y);
        };
        std::sort(order.begin(), order.end(),
                  [&](size_t a, size_t b) { return distance(a) < distance(b); });

        auto clear = [&](Point target) {
            auto blocked = [&](Ring const& r) {
                for (size_t i = 0; i < r.size(); ++i)
                    if (crosses(pm, target, project(r[i].vertex),
                                project(r[(i + 1) % r.size()].vertex)))
                        return true;
                return false;
            };
            if (blocked(ring))
                return false;
            for (size_t k = h; k < holes.size(); ++k)
                if (blocked(holes[k]))
                    return false;
            return true;
        };
        size_t chosen = order.empty() ? 0 : order.front();
        for (size_t i : order)
            if (clear(project(ring[i].vertex))) {
                chosen = i;
                break;
            }

        Ring joined;
        joined.reserve(ring.size() + hole.size() + 2);
        joined.insert(joined.end(), ring.begin(), ring.begin() + long(chosen) + 1);
        for (size_t k = 0; k <= hole.size(); ++k)
            joined.push_back(hole[(m + k) % hole.size()]);
        joined.push_back(ring[chosen]);
        joined.insert(joined.end(), ring.begin() + long(chosen) + 1, ring.end());
        ring.swap(joined);
    }
    return ring;
}

} // namespace

void HoleBridger::bridge(MeshData& mesh) {
    if (!mesh.hasHoles())
        return;
    uint32_t const faces = mesh.faceCount();
    std::vector<char> isHole(faces, 0);
    for (uint32_t h : mesh.holes)
        if (h < faces)
            isHole[h] = 1;

    MeshData out;
    out.name = mesh.name;
    out.coords = mesh.coords;
    out.materials = mesh.materials;
    out.uvSets.resize(mesh.uvSets.size());
    for (size_t s = 0; s < mesh.uvSets.size(); ++s)
        out.uvSets[s].coords = mesh.uvSets[s].coords;

    for (uint32_t f = 0; f < faces; ++f) {
        if (isHole[f])
            continue;
        std::vector<uint32_t> holeFaces(mesh.holes.begin() + mesh.holeOffsets[f],
                                        mesh.holes.begin() + mesh.holeOffsets[f + 1]);
        // UV sets that the face and all its holes have.
        std::vector<size_t> sets;
        for (size_t s = 0; s < mesh.uvSets.size(); ++s) {
            bool all = hasUVs(mesh, s, f);
            for (uint32_t h : holeFaces)
                all = all && hasUVs(mesh, s, h);
            if (all)
                sets.push_back(s);
        }
        Ring const ring =
            holeFaces.empty() ? readRing(mesh, f, sets) : bridgeFace(mesh, f, holeFaces, sets);
        for (Corner const& corner : ring)
            out.indices.push_back(corner.vertex);
        out.faceOffsets.push_back(static_cast<uint32_t>(out.indices.size()));
        for (size_t s = 0; s < mesh.uvSets.size(); ++s) {
            auto const position = std::find(sets.begin(), sets.end(), s);
            if (position != sets.end())
                for (Corner const& corner : ring)
                    out.uvSets[s].indices.push_back(corner.uvs[size_t(position - sets.begin())]);
            out.uvSets[s].faceOffsets.push_back(
                static_cast<uint32_t>(out.uvSets[s].indices.size()));
        }
        out.holeOffsets.push_back(0);
        out.faceMaterials.push_back(f < mesh.faceMaterials.size() ? mesh.faceMaterials[f] : 0);
    }
    mesh = std::move(out);
}

} // namespace koltx
