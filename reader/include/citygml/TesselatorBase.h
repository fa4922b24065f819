#pragma once

#include <citygml/TVec3.h>

#include <vector>

namespace citygml {

// Turns a polygon with holes into triangles; given to load() by callers that want triangles.
class TesselatorBase {
public:
    virtual ~TesselatorBase() = default;

    // `vertices` holds the rings one after another (closing positions removed), `ringSizes` the
    // count of each ring, exterior first. Returns triangle corner indices into `vertices`.
    virtual std::vector<unsigned int> triangulate(std::vector<TVec3d> const& vertices,
                                                  std::vector<unsigned int> const& ringSizes) = 0;
};

} // namespace citygml
