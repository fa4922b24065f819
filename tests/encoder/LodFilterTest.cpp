#include <encoder/LodFilter.h>

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

TEST(LodFilter, ComparesTheNumberBehindLodWithTheLimit) {
    EXPECT_TRUE(lodWithinLimit(L"bldg:Building", 0));
    EXPECT_TRUE(lodWithinLimit(L"gml:Solid", 0));
    EXPECT_TRUE(lodWithinLimit(L"", 0));
    EXPECT_TRUE(lodWithinLimit(L"bldg:lod2Solid", 2));
    EXPECT_FALSE(lodWithinLimit(L"bldg:lod2Solid", 1));
    EXPECT_FALSE(lodWithinLimit(L"bldg:lod3MultiSurface", 2));
    EXPECT_TRUE(lodWithinLimit(L"gen:lod4Geometry", 4));
    EXPECT_TRUE(lodWithinLimit(L"core:lod0MultiSurface", 0));
    // Several digits are one number.
    EXPECT_FALSE(lodWithinLimit(L"bldg:lod10Solid", 4));
    EXPECT_TRUE(lodWithinLimit(L"bldg:lod10Solid", 10));
    // Case matters: ":LOD" is no level of detail.
    EXPECT_TRUE(lodWithinLimit(L"bldg:LOD9Solid", 0));
    // Only the first ":lod" counts.
    EXPECT_TRUE(lodWithinLimit(L"a:lod1b:lod9", 1));
}

TEST(LodFilter, RefusesLodWithoutANumber) {
    try {
        lodWithinLimit(L"bldg:lodSurface", 4);
        FAIL() << "no exception";
    } catch (std::invalid_argument const& e) {
        EXPECT_STREQ("invalid stoi argument", e.what());
    }
    try {
        lodWithinLimit(L"bldg:lod99999999999999999999Solid", 4);
        FAIL() << "no exception";
    } catch (std::out_of_range const& e) {
        EXPECT_STREQ("stoi argument out of range", e.what());
    }
}
