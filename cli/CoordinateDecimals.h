#pragma once

#include <memory>
#include <vector>

namespace koltx {
class Mesh;
}

// How many decimals the coordinates of some meshes carry: the fewest with which every
// coordinate prints back to its own value (at most `limit`). Coordinates in degrees need many
// more than metres do, which is why a fixed vertex precision would destroy them.
class CoordinateDecimals {
public:
    static int needed(std::vector<std::shared_ptr<koltx::Mesh>> const& meshes, int limit = 10);
    static int needed(double value, int limit = 10);
};
