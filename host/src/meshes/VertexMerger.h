#pragma once

#include <cstdint>
#include <vector>

namespace koltx {

// Finds vertices closer to each other than a tolerance with a spatial hash: cells twice the
// tolerance wide, so a vertex looks into at most two cells per axis. Each vertex joins the
// nearest earlier representative within reach, else becomes one itself. A tolerance of 0 (or
// below, or not a number) joins exact duplicates only.
class VertexMerger {
public:
    // `coords` holds x, y, z per vertex. `remap` receives for each vertex the index of its
    // representative among the `merged` vertices, which keep the order of first appearance.
    // Returns the number of merged vertices.
    static uint32_t merge(std::vector<double> const& coords, double tolerance,
                          std::vector<uint32_t>& remap, std::vector<double>& merged);

    // The two ways merge() takes, with the same result: through the cells' table, and, for a
    // few vertices of moderate size, by comparing each with every representative. The second
    // returns false, touching nothing, where it does not apply.
    static uint32_t mergeByCells(std::vector<double> const& coords, double tolerance,
                                 std::vector<uint32_t>& remap, std::vector<double>& merged);
    static bool mergeByComparison(std::vector<double> const& coords, double tolerance,
                                  std::vector<uint32_t>& remap, std::vector<double>& merged);
};

} // namespace koltx
