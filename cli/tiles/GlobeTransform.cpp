#include "GlobeTransform.h"

#include "geo/GeoFrame.h"

#include <cmath>
#include <limits>

void GlobeTransform::toEcef(double* xyz, std::size_t count) const {
    frame.toEcef(xyz, count);
    for (std::size_t i = 0; i < count * 3; ++i) {
        if (!std::isfinite(xyz[i]) || std::abs(xyz[i]) > 1e30)
            xyz[i] = std::numeric_limits<double>::infinity();
    }
}

void GlobeTransform::toGeodetic(double* xyz, std::size_t count) {
    double const a = 6378137.0, f = 1 / 298.257223563, e2 = f * (2 - f);
    for (std::size_t i = 0; i < count; ++i, xyz += 3) {
        double const x = xyz[0], y = xyz[1], z = xyz[2];
        double const p = std::hypot(x, y);
        // Iterated from the spherical guess; converges to well below a millimetre on Earth.
        double lat = std::atan2(z, p * (1 - e2)), h = 0;
        for (int k = 0; k < 8; ++k) {
            double const n = a / std::sqrt(1 - e2 * std::sin(lat) * std::sin(lat));
            h = std::abs(std::cos(lat)) > 1e-9 ? p / std::cos(lat) - n : std::abs(z) - n * (1 - e2);
            lat = std::atan2(z, p * (1 - e2 * n / (n + h)));
        }
        xyz[0] = std::atan2(y, x);
        xyz[1] = lat;
        xyz[2] = h;
    }
}

std::array<double, 16> GlobeTransform::enuToEcef(std::array<double, 3> const& e, double lon,
                                                 double lat) {
    double const sl = std::sin(lon), cl = std::cos(lon), sp = std::sin(lat), cp = std::cos(lat);
    return {-sl, cl, 0, 0, -sp * cl, -sp * sl, cp, 0, cp * cl, cp * sl, sp, 0, e[0], e[1], e[2], 1};
}
