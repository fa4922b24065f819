#pragma once

#include "MeshData.h"

namespace koltx {

// Joins the holes of each face into the face's ring: from the hole vertex farthest along the
// face's first in-plane axis to the nearest ring vertex whose connecting segment crosses no
// edge, around the hole (turned against the ring's sense) and back. Faces keep their order; hole
// faces are removed. A face keeps its UVs in a set only when all its holes have UVs there.
class HoleBridger {
public:
    static void bridge(MeshData& mesh);
};

} // namespace koltx
