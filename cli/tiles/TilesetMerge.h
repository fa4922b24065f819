#pragma once

#include <filesystem>
#include <iosfwd>
#include <string>
#include <vector>

// The root `tileset.json` of an output folder over the parts below it: a quadtree over the
// parts' regions whose inner tiles have no content, with a tile per part with features at its
// leaves pointing at the part's own tileset; refined by addition.
class TilesetMerge {
public:
    struct Totals {
        std::size_t parts = 0;
        uint64_t features = 0;
        uint64_t tiles = 0;
        uint64_t bytes = 0;
    };

    // `names` limits the merge to these parts; empty means every part in the folder. A part
    // whose index cannot be read is reported on `err` and left out. Throws std::runtime_error
    // when no part has a feature or the tileset cannot be written.
    static Totals run(std::filesystem::path const& outDir, std::vector<std::string> const& names,
                      std::ostream& err, bool& anyBad);
};
