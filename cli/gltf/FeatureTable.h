#pragma once

#include "KeyIndex.h"
#include "lod/MeshPath.h"

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

// One row per feature that carries geometry, in the order features are first met. A feature is
// known by its mesh path up to its own element; one without an id gets a generated one such as
// `bldg:WallSurface:3`, which no gml:id can equal (ids hold no colon).
class FeatureTable {
public:
    // The row of the mesh with this path, added when new.
    uint32_t add(MeshPath const& path);
    // The id of a top-level feature, generated the same way when it has none.
    std::string const& topId(MeshPath const& path);

    std::size_t size() const { return lods.size(); }
    bool empty() const { return lods.empty(); }
    // The property table's bytes, appended to `bytes`: ids, classes, top-level ids and paths as
    // strings with UINT32 offsets, then levels as UINT8 (255 for none). Each part starts at a
    // multiple of 8; `views` gets its offset and length.
    void encode(std::string& bytes, std::vector<std::pair<uint64_t, uint64_t>>& views) const;
    // Room for this many rows.
    void reserve(std::size_t rows);

private:
    // One string property of all rows, kept as it is written: values back to back, offsets.
    struct Column {
        std::string values;
        std::vector<uint32_t> offsets{0};
        void add(std::string_view value) {
            values.append(value);
            offsets.push_back(static_cast<uint32_t>(values.size()));
        }
    };

    std::string generated(std::string const& tag);

    KeyIndex features;              // feature keys, numbered as the rows
    KeyIndex tops;                  // top-level keys, numbered as topIds
    std::deque<std::string> topIds; // stays in place: topId() hands out references
    std::unordered_map<std::string, uint32_t> counters;
    Column ids, tags, topIdColumn, paths;
    std::vector<int> lods; // highest level among the row's meshes; -1 for none
};
