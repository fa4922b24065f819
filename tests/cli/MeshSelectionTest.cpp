#include "geo/CrsName.h"
#include "lod/LodSelection.h"

#include <Files.h>
#include <TestData.h>
#include <gtest/gtest.h>

// Paths of one building with LoD1 and LoD2, a second with LoD0 and LoD3, and a relief without
// a level.
std::vector<MeshPath> const Paths = {
    MeshPath::parse(R"(bldg:Building[a]\bldg:lod1Solid[]\gml:Solid[]\)"),
    MeshPath::parse(
        R"(bldg:Building[a]\bldg:boundedBy[]\bldg:WallSurface[w]\bldg:lod2MultiSurface[]\gml:MultiSurface[]\)"),
    MeshPath::parse(R"(bldg:Building[b]\bldg:lod0FootPrint[]\gml:MultiSurface[]\)"),
    MeshPath::parse(R"(bldg:Building[b]\bldg:lod3MultiSurface[]\gml:MultiSurface[]\)"),
    MeshPath::parse(
        R"(dem:ReliefFeature[r]\dem:reliefComponent[]\dem:TINRelief[t]\gml:TriangulatedSurface[]\)"),
};

TEST(MeshSelection, LevelsPerTopLevelFeature) {
    struct Case {
        LodSelection selection;
        std::vector<bool> kept;
    } const cases[] = {
        {LodSelection::fromOptions(false, std::nullopt), {false, true, false, true, true}},
        {LodSelection::fromOptions(false, 2), {false, true, true, false, true}},
        {LodSelection::fromOptions(false, 0), {false, false, true, false, true}},
        {LodSelection::fromOptions(true, 1), {true, true, true, true, true}},
    };
    for (auto const& c : cases)
        EXPECT_EQ(c.selection.keep(Paths), c.kept);
}

TEST(MeshSelection, PathParts) {
    EXPECT_EQ(Paths[1].topId, "a");
    EXPECT_EQ(Paths[1].featureTag, "bldg:WallSurface");
    EXPECT_EQ(Paths[1].featureId, "w");
    EXPECT_EQ(Paths[1].featureKey, R"(bldg:Building[a]\bldg:boundedBy[]\bldg:WallSurface[w])");
    EXPECT_EQ(Paths[0].featureKey, "bldg:Building[a]");
    EXPECT_EQ(Paths[2].lod, 0);
    EXPECT_EQ(Paths[4].lod, -1);
    EXPECT_EQ(Paths[4].featureTag, "dem:TINRelief");
}

TEST(MeshSelection, SpatialReferenceNames) {
    for (auto const& line : testsupport::tableRows(testsupport::dataFile("cli/crs_names.txt"))) {
        auto const field = testsupport::split(line, " | ");
        EXPECT_EQ(CrsName::toProj(field.at(0)).value_or("-"), field.at(1)) << line;
    }
    EXPECT_FALSE(CrsName::toProj("#local-CRS-1"));
}
