#include "CoordinateDecimals.h"

#include <koltx/Mesh.h>

#include <algorithm>
#include <cmath>

int CoordinateDecimals::needed(double value, int limit) {
    if (!std::isfinite(value))
        return 0;
    double scale = 1.0;
    for (int decimals = 0; decimals < limit; ++decimals) {
        double const scaled = value * scale;
        // What a text of this many decimals gives back, allowing for the double's own rounding.
        if (std::fabs(scaled - std::nearbyint(scaled)) <= 1e-6 + std::fabs(scaled) * 1e-15)
            return decimals;
        scale *= 10.0;
    }
    return limit;
}

int CoordinateDecimals::needed(std::vector<std::shared_ptr<koltx::Mesh>> const& meshes, int limit) {
    int most = 0;
    for (auto const& mesh : meshes) {
        for (double value : mesh->getVertexCoords()) {
            most = std::max(most, needed(value, limit));
            if (most == limit)
                return most;
        }
    }
    return most;
}
