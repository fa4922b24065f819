#include "TileFeatures.h"

#include "GlobeTransform.h"
#include "lod/MeshPath.h"

#include <koltx/Mesh.h>

#include <algorithm>
#include <cmath>
#include <string_view>
#include <unordered_map>

namespace {

// Margins that keep a region around its content despite the curvature between box corners.
constexpr double AngleMargin = 2e-8; // radians, about 13 cm
constexpr double HeightMargin = 0.1; // metres

} // namespace

TileFeatures::Region TileFeatures::empty() {
    return {INFINITY, INFINITY, -INFINITY, -INFINITY, INFINITY, -INFINITY};
}

void TileFeatures::extend(Region& r, Region const& o) {
    for (int i : {0, 1, 4})
        r[i] = std::min(r[i], o[i]);
    for (int i : {2, 3, 5})
        r[i] = std::max(r[i], o[i]);
}

TileFeatures::TileFeatures(std::vector<std::shared_ptr<koltx::Mesh>> const& meshes,
                           std::vector<MeshPath> const& paths, GlobeTransform const& globe) {
    std::unordered_map<std::string_view, std::size_t> byTop;
    std::vector<Feature> found;
    for (std::size_t m = 0; m < meshes.size(); ++m) {
        auto const [it, added] = byTop.emplace(paths[m].topKey, found.size());
        if (added) {
            found.emplace_back();
            found.back().low.fill(INFINITY);
            found.back().high.fill(-INFINITY);
        }
        Feature& f = found[it->second];
        f.meshes.push_back(static_cast<uint32_t>(m));
        // The box in host axes (x, z, -y), turned into the file's once per mesh.
        auto const& c = meshes[m]->getVertexCoords();
        double low[3] = {INFINITY, INFINITY, INFINITY}, high[3] = {-INFINITY, -INFINITY, -INFINITY};
        for (std::size_t i = 0; i + 2 < c.size(); i += 3) {
            if (!std::isfinite(c[i] + c[i + 1] + c[i + 2]) &&
                !(std::isfinite(c[i]) && std::isfinite(c[i + 1]) && std::isfinite(c[i + 2])))
                continue;
            for (int a = 0; a < 3; ++a) {
                low[a] = c[i + a] < low[a] ? c[i + a] : low[a];
                high[a] = c[i + a] > high[a] ? c[i + a] : high[a];
            }
        }
        double const fileLow[3] = {low[0], -high[2], low[1]};
        double const fileHigh[3] = {high[0], -low[2], high[1]};
        for (int a = 0; a < 3; ++a) {
            f.low[a] = std::min(f.low[a], fileLow[a]);
            f.high[a] = std::max(f.high[a], fileHigh[a]);
        }
        // Flat normals: every corner of a face is a vertex of its own, each face a fan.
        uint64_t const corners = meshes[m]->getVertexIndices().size();
        f.bytes += corners * 36 + corners * 12;
    }

    // Box corners on the globe, all features in one call.
    std::vector<double> corners;
    std::vector<Feature> placed;
    for (auto& f : found) {
        if (!(f.low[0] <= f.high[0])) {
            ++dropped;
            continue;
        }
        for (int k = 0; k < 8; ++k)
            corners.insert(corners.end(),
                           {k & 1 ? f.high[0] : f.low[0], k & 2 ? f.high[1] : f.low[1],
                            k & 4 ? f.high[2] : f.low[2]});
        placed.push_back(std::move(f));
    }
    globe.toEcef(corners.data(), corners.size() / 3);
    std::vector<double> geodetic = corners;
    GlobeTransform::toGeodetic(geodetic.data(), geodetic.size() / 3);

    // The local frame: east-north-up at the mean of the features' centres.
    std::array<double, 3> mean{};
    std::size_t counted = 0;
    std::vector<std::array<double, 3>> centres(placed.size());
    for (std::size_t i = 0; i < placed.size(); ++i) {
        double const* c = corners.data() + i * 24;
        for (int a = 0; a < 3; ++a)
            centres[i][a] = (c[a] + c[21 + a]) / 2;
        if (std::isfinite(centres[i][0]) && std::isfinite(centres[i][1]) &&
            std::isfinite(centres[i][2])) {
            for (int a = 0; a < 3; ++a)
                mean[a] += centres[i][a];
            ++counted;
        }
    }
    for (auto& v : mean)
        v = counted ? v / counted : 0;
    double const lon = std::atan2(mean[1], mean[0]);
    double const lat = std::atan2(mean[2], std::hypot(mean[0], mean[1]));
    auto const m = GlobeTransform::enuToEcef(mean, lon, lat);

    for (std::size_t i = 0; i < placed.size(); ++i) {
        Feature& f = placed[i];
        double const* c = corners.data() + i * 24;
        double const* g = geodetic.data() + i * 24;
        bool finite = true;
        for (int k = 0; k < 24; ++k)
            finite = finite && std::isfinite(c[k]) && std::isfinite(g[k]);
        if (!finite) {
            ++dropped;
            continue;
        }
        f.size = std::hypot(c[21] - c[0], c[22] - c[1], c[23] - c[2]);
        double const d[3] = {centres[i][0] - mean[0], centres[i][1] - mean[1],
                             centres[i][2] - mean[2]};
        f.east = m[0] * d[0] + m[1] * d[1] + m[2] * d[2];
        f.north = m[4] * d[0] + m[5] * d[1] + m[6] * d[2];
        f.region = empty();
        for (int k = 0; k < 8; ++k) {
            double const* p = g + k * 3;
            extend(f.region, {p[0], p[1], p[0], p[1], p[2], p[2]});
        }
        f.region = {std::max(-M_PI, f.region[0] - AngleMargin),
                    std::max(-M_PI / 2, f.region[1] - AngleMargin),
                    std::min(M_PI, f.region[2] + AngleMargin),
                    std::min(M_PI / 2, f.region[3] + AngleMargin),
                    f.region[4] - HeightMargin,
                    f.region[5] + HeightMargin};
        list.push_back(std::move(f));
    }
}
