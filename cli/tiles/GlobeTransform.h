#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <string>

// A file's CRS to Earth-centred coordinates (EPSG:4978) and to longitude, latitude (radians)
// and ellipsoidal height on WGS84, through PROJ. One object serves one thread.
class GlobeTransform {
public:
    // `crsText` is anything PROJ reads. Throws std::runtime_error when PROJ cannot place the
    // CRS on the globe.
    explicit GlobeTransform(std::string const& crsText);
    ~GlobeTransform();
    GlobeTransform(GlobeTransform const&) = delete;
    GlobeTransform& operator=(GlobeTransform const&) = delete;

    // `count` points of the file's x, y, z to EPSG:4978, in place. A point PROJ cannot place
    // becomes infinite.
    void toEcef(double* xyz, std::size_t count) const;
    // Earth-centred x, y, z to longitude, latitude (radians) and height (metres), in place.
    void toGeodetic(double* xyz, std::size_t count) const;

    // Column-major 4x4 from east-north-up metres at an Earth-centred point to EPSG:4978.
    static std::array<double, 16> enuToEcef(std::array<double, 3> const& ecef, double lon,
                                            double lat);

private:
    struct Proj;
    std::unique_ptr<Proj> proj;
};
