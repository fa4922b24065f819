#include "CoordinateDecimals.h"

#include <koltx/Mesh.h>

#include <algorithm>
#include <cmath>

namespace {

// What a text of as many decimals as `scale` stands for gives back, allowing for the double's
// own rounding.
bool fits(double value, double scale) {
    double const scaled = value * scale;
    return std::fabs(scaled - std::nearbyint(scaled)) <= 1e-6 + std::fabs(scaled) * 1e-15;
}

} // namespace

int CoordinateDecimals::needed(double value, int limit) {
    if (!std::isfinite(value))
        return 0;
    double scale = 1.0;
    for (int decimals = 0; decimals < limit; ++decimals) {
        if (fits(value, scale))
            return decimals;
        scale *= 10.0;
    }
    return limit;
}

int CoordinateDecimals::needed(std::vector<std::shared_ptr<koltx::Mesh>> const& meshes, int limit) {
    int most = 0;
    double scale = 1.0; // 10 to the `most`, made as needed() makes it
    for (auto const& mesh : meshes) {
        for (double value : mesh->getVertexCoords()) {
            // A value that fits in `most` decimals needs no more: needed() stops at the first
            // count that fits.
            if (!std::isfinite(value) || fits(value, scale))
                continue;
            int const decimals = needed(value, limit);
            if (decimals <= most)
                continue;
            if (decimals == limit)
                return limit;
            for (; most < decimals; ++most)
                scale *= 10.0;
        }
    }
    return most;
}
