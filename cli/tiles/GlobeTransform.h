#pragma once

#include <array>
#include <cstddef>

class GeoFrame;

// A file's coordinates to Earth-centred ones (EPSG:4978, through the frame's PROJ
// transformation) and those to longitude, latitude (radians) and height on WGS84.
class GlobeTransform {
public:
    explicit GlobeTransform(GeoFrame const& frame) : frame(frame) {}

    // `count` points of the file's x, y, z to EPSG:4978, in place. A point PROJ cannot place
    // becomes infinite.
    void toEcef(double* xyz, std::size_t count) const;
    // Earth-centred x, y, z to longitude, latitude (radians) and height (metres), in place.
    static void toGeodetic(double* xyz, std::size_t count);

    // Column-major 4x4 from east-north-up metres at an Earth-centred point to EPSG:4978.
    static std::array<double, 16> enuToEcef(std::array<double, 3> const& ecef, double lon,
                                            double lat);

private:
    GeoFrame const& frame;
};
