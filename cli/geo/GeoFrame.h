#pragma once

#include <nlohmann/json.hpp>

#include <array>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>

// The frame of a glTF output: float32 metres relative to an origin, y up, east +x, north -z.
// A geographic CRS is always turned into east-north-up at the origin through PROJ; a projected
// one keeps its grid axes, shifted (and scaled to metres), unless east-north-up is asked for.
// Without a CRS PROJ knows the frame is the file's axes, shifted. Coordinates given to it are the
// file's (x, y, z), never the host's. One frame serves one thread.
class GeoFrame {
public:
    enum class Kind { Enu, Grid, Shifted };

    struct Options {
        std::optional<std::string> crs;              // overrides the file's spatial reference
        std::optional<std::array<double, 3>> origin; // in the input CRS
        bool enu = false;                            // east-north-up for projected CRSs too
    };

    // `srsName` is the file's spatial reference (may be empty); the origin defaults to the centre
    // of [low, high]. An unknown CRS adds one line to `warnings` and gives a shifted frame.
    GeoFrame(std::string const& srsName, Options const& options, std::array<double, 3> const& low,
             std::array<double, 3> const& high, std::wstring& warnings);
    ~GeoFrame();
    GeoFrame(GeoFrame const&) = delete;
    GeoFrame& operator=(GeoFrame const&) = delete;

    // `count` points of the file's x, y, z into glTF x, y, z.
    void toGltf(double const* file, std::size_t count, float* out) const;

    // Many tiles of one file share a frame: an east-north-up frame moves to a new origin without
    // asking PROJ for the transformation again.
    void moveOrigin(std::array<double, 3> const& origin);
    // East-north-up only: within the box [low, high] of the file's coordinates, replaces PROJ by
    // a cubic in x and y, linear in z, through PROJ's own values at Chebyshev nodes, kept only
    // when it stays within 0.05 mm of PROJ at check points between them. Points outside the box
    // still go through PROJ. Returns whether the fit is in use; moveOrigin drops it.
    bool fit(std::array<double, 3> const& low, std::array<double, 3> const& high);
    // `count` points of the file's x, y, z to EPSG:4978, in place; infinite where PROJ cannot.
    void toEcef(double* xyz, std::size_t count) const;

    Kind kind() const { return frameKind; }
    // What goes into `asset.extras`: crs, crsName, origin, frame, enuToEcef.
    nlohmann::ordered_json extras() const;
    // Column-major 4x4 from east-north-up metres at the origin to EPSG:4978, when PROJ knows
    // the CRS.
    std::optional<std::array<double, 16>> const& enuToEcef() const { return matrix; }

    // "EPSG:25832 (ETRS89 / UTM zone 32N)" for a spatial reference PROJ knows, else nullopt.
    static std::optional<std::string> describe(std::string const& srsName);

private:
    void placeOrigin();
    void projToGltf(double const* file, std::size_t count, double* out) const;

    // glTF x, y, z as sum over i, j < 4 of (a + b w) u^i v^j, with u, v, w the box's
    // coordinates scaled to [-1, 1].
    struct Cubic {
        std::array<double, 3> centre{}, half{};
        std::array<std::array<double, 32>, 3> terms{}; // [output][(i * 4 + j) * 2 + (0: a, 1: b)]
    };
    static void evaluate(Cubic const& cubic, double const* file, double* out);
    static void evaluatePair(Cubic const& cubic, double const* file, double* out);

    struct Proj;
    std::unique_ptr<Proj> proj;
    Kind frameKind = Kind::Shifted;
    std::string crsText;
    std::string crsName;
    std::array<double, 3> origin{};
    std::array<double, 3> originEcef{};
    double unitFactor = 1.0; // grid units to metres
    std::optional<std::array<double, 16>> matrix;
    std::optional<Cubic> cubic;
};
