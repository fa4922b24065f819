#pragma once

#include "KeyIndex.h"
#include "lod/MeshPath.h"

#include <cstdint>
#include <deque>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

// One row per feature that carries geometry, in the order features are first met. A feature is
// known by its mesh path up to its own element; one without an id gets a generated one such as
// `bldg:WallSurface:3`, which no gml:id can equal (ids hold no colon).
class FeatureTable {
public:
    struct Row {
        std::string id;
        std::string tag;
        std::string topId;
        std::string path;
        int lod = -1; // highest level among the feature's meshes; -1 for none
    };

    // The row of the mesh with this path, added when new.
    uint32_t add(MeshPath const& path);
    // The id of a top-level feature, generated the same way when it has none.
    std::string const& topId(MeshPath const& path);

    std::vector<Row> const& rows() const { return table; }
    // The property table's bytes, appended to `bytes`: ids, classes, top-level ids and paths as
    // strings with UINT32 offsets, then levels as UINT8 (255 for none). Each part starts at a
    // multiple of 8; `views` gets its offset and length.
    void encode(std::string& bytes, std::vector<std::pair<uint64_t, uint64_t>>& views) const;
    // Room for this many rows.
    void reserve(std::size_t rows) { table.reserve(rows); }

private:
    std::string generated(std::string const& tag);

    KeyIndex features;              // feature keys, numbered as the rows
    KeyIndex tops;                  // top-level keys, numbered as topIds
    std::deque<std::string> topIds; // stays in place: topId() hands out references
    std::unordered_map<std::string, uint32_t> counters;
    std::vector<Row> table;
};
