#include "../../host/src/meshes/VertexMerger.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace {

using koltx::VertexMerger;

// Small meshes are merged by comparing vertices directly; the result must be the one of the
// cells' table, ties between equally near representatives included. Points on a grid of a third
// of the tolerance make such ties, exact duplicates and distances at the tolerance common.
TEST(VertexMerger, ComparisonChoosesWhatTheCellsChoose) {
    std::mt19937 random(7);
    double const nan = std::numeric_limits<double>::quiet_NaN();
    int compared = 0;
    for (double const tolerance : {0.001, 0.5, 0.0, -1.0, nan}) {
        double const step = tolerance > 0.0 ? tolerance / 3.0 : 0.25;
        for (int round = 0; round < 3000; ++round) {
            std::uniform_int_distribution<int> size(1, 32);
            std::uniform_int_distribution<int> grid(-4, 4);
            std::vector<double> coords;
            int const vertices = size(random);
            // Around a real coordinate, and around 0 where -0.0 and 0.0 meet.
            double const base = round % 2 == 0 ? 458877.0 : 0.0;
            for (int v = 0; v < 3 * vertices; ++v) {
                double const value = base + grid(random) * step;
                coords.push_back(value == 0.0 && v % 2 == 0 ? -0.0 : value);
            }
            std::vector<uint32_t> byCells, byComparison;
            std::vector<double> cellsMerged, comparisonMerged;
            VertexMerger::mergeByCells(coords, tolerance, byCells, cellsMerged);
            ASSERT_TRUE(
                VertexMerger::mergeByComparison(coords, tolerance, byComparison, comparisonMerged));
            ASSERT_EQ(byComparison, byCells) << "tolerance " << tolerance << ", round " << round;
            ASSERT_EQ(comparisonMerged.size(), cellsMerged.size());
            for (std::size_t i = 0; i < cellsMerged.size(); ++i)
                ASSERT_EQ(std::signbit(comparisonMerged[i]), std::signbit(cellsMerged[i]));
            ++compared;
        }
    }
    EXPECT_EQ(compared, 15000);

    // Larger meshes, huge coordinates and coordinates that are not finite take the cells' way.
    std::vector<uint32_t> remap;
    std::vector<double> merged;
    EXPECT_FALSE(
        VertexMerger::mergeByComparison(std::vector<double>(33 * 3, 1.0), 0.001, remap, merged));
    EXPECT_FALSE(VertexMerger::mergeByComparison({1e300, 0, 0}, 0.001, remap, merged));
    EXPECT_FALSE(VertexMerger::mergeByComparison({nan, 0, 0}, 0.001, remap, merged));
    EXPECT_TRUE(merged.empty());
    EXPECT_TRUE(VertexMerger::mergeByComparison({nan, 0, 0, nan, 0, 0}, 0.0, remap, merged));
    EXPECT_EQ(remap, (std::vector<uint32_t>{0, 0})); // exact merging goes by the bits
}

} // namespace
