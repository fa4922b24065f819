#pragma once

#include "geo/GeoFrame.h"

#include <cstddef>
#include <string>
#include <vector>

// Options of the mesh outputs (OBJ, glTF): level selection and the glTF frame. `--lod N` itself
// belongs to EncodeOptions, which gives it its CityGML meaning; mesh outputs read it from there.
class MeshOutputOptions {
public:
    // If arguments[i] is one of these options, takes it (and its value) and returns true.
    // Throws UsageError for a missing or malformed value.
    bool consume(std::vector<std::string> const& arguments, std::size_t& i);

    static std::string usage();

    bool allLods = false;
    bool perFeature = false;
    GeoFrame::Options frame;
};
