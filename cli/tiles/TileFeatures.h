#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class GlobeTransform;
struct MeshPath;
namespace koltx {
class Mesh;
}

// A file's top-level features as the tiler sees them: whole, placed by the centre of their
// bounding box, with their extent on the globe and an estimate of their bytes in a tile.
class TileFeatures {
public:
    // Longitude and latitude (radians) and heights (metres): west, south, east, north, low, high.
    using Region = std::array<double, 6>;

    struct Feature {
        std::vector<uint32_t> meshes;        // indices into the meshes given, in their order
        std::array<double, 3> low{}, high{}; // bounding box in the file's x, y, z
        double east = 0, north = 0;          // centre, metres in the file's local frame
        double size = 0;                     // bounding box diagonal, metres
        uint64_t bytes = 0;                  // estimated GLB bytes
        Region region{};
    };

    // Groups `meshes` (host axes) by their top-level feature, as their `paths` say. A feature
    // without a single finite coordinate cannot be placed: it is counted in `unplaced`, not tiled.
    TileFeatures(std::vector<std::shared_ptr<koltx::Mesh>> const& meshes,
                 std::vector<MeshPath> const& paths, GlobeTransform const& globe);

    std::vector<Feature> const& features() const { return list; }
    std::size_t unplaced() const { return dropped; }

    // The smallest region holding both.
    static void extend(Region& region, Region const& other);
    static Region empty();

private:
    std::vector<Feature> list;
    std::size_t dropped = 0;
};
