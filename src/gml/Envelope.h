#pragma once

#include <koltx/BoundingBox.h>

#include <string>

namespace gml {

// The bounds of one initial shape, shared by all of its top-level features.
struct Envelope {
    koltx::BoundingBox bounds;
    std::wstring srsName;
};

} // namespace gml
