#include "DecoderTestSupport.h"

#include <kolt/AttributeMap.h>
#include <koltx/URI.h>

using namespace decodertest;

namespace {

std::string building(std::string const& id, std::string const& content) {
    return "<core:cityObjectMember><bldg:Building gml:id=\"" + id + "\">" + content +
           "</bldg:Building></core:cityObjectMember>";
}

std::string envelope(std::string const& srs, std::string const& lower, std::string const& upper) {
    return "<gml:boundedBy><gml:Envelope" + (srs.empty() ? "" : " srsName=\"" + srs + "\"") +
           "><gml:lowerCorner>" + lower + "</gml:lowerCorner><gml:upperCorner>" + upper +
           "</gml:upperCorner></gml:Envelope></gml:boundedBy>";
}

std::string wall(std::string const& id, std::string const& geometry) {
    return "<bldg:boundedBy><bldg:WallSurface gml:id=\"" + id + "\">" + geometry +
           "</bldg:WallSurface></bldg:boundedBy>";
}

bool hasSpatialReference(Decoded const& d) {
    return d.geometry()->getAttributeMap()->hasKey(L"/georef/spatialReference");
}

TEST(DecoderTraversal, StreamThatIsNotXmlLeavesResultsAlone) {
    CityGMLDecoder decoder;
    Decoded d;
    d.results.push_back(nullptr);
    std::istringstream stream("this is not <xml");
    decoder.decode(d.results, stream, nullptr, L"/x/broken.gml", nullptr, d.warnings);
    EXPECT_EQ(d.results.size(), 1u);
    EXPECT_EQ(d.warnings.rfind(L"Failed to load citygml file: ", 0), 0u) << d.warnings;
    EXPECT_EQ(d.warnings.back(), L'\n');
    EXPECT_EQ(std::count(d.warnings.begin(), d.warnings.end(), L'\n'), 1);
}

TEST(DecoderTraversal, MeshPathsJoinObjectsAndGeometriesChildrenFirst) {
    std::string const text = cityModel(building(
        "b1", wall("w1", multiSurface("bldg:lod2MultiSurface", {polygon("p1", square())})) +
                  multiSurface("bldg:lod1MultiSurface", {polygon("p2", square())}, "ms1")));
    Decoded const d = decode(text);
    ASSERT_TRUE(d.geometry());
    EXPECT_EQ(d.warnings, L"");
    EXPECT_EQ(d.meshNames(),
              (std::vector<std::wstring>{
                  L"bldg:Building[b1]\\bldg:boundedBy[]\\bldg:WallSurface[w1]\\"
                  L"bldg:lod2MultiSurface[]\\gml:MultiSurface[]\\",
                  L"bldg:Building[b1]\\bldg:lod1MultiSurface[]\\gml:MultiSurface[ms1]\\"}));
    EXPECT_EQ(d.geometry()->getURI()->getPath(), L"/nonexistent/test.gml");
}

TEST(DecoderTraversal, EveryLodOfEveryRootGivesAMesh) {
    std::string const text = cityModel(
        building("a", multiSurface("bldg:lod1MultiSurface", {polygon("a1", square())}) +
                          multiSurface("bldg:lod2MultiSurface", {polygon("a2", square())}) +
                          multiSurface("bldg:lod3MultiSurface", {polygon("a3", square())})) +
        building("b", multiSurface("bldg:lod2MultiSurface", {polygon("b1", square())})));
    Decoded const d = decode(text);
    ASSERT_EQ(d.results.size(), 1u);
    std::vector<std::wstring> const names = d.meshNames();
    ASSERT_EQ(names.size(), 4u);
    EXPECT_EQ(names[0].rfind(L"bldg:Building[a]\\bldg:lod1MultiSurface[]\\", 0), 0u);
    EXPECT_EQ(names[2].rfind(L"bldg:Building[a]\\bldg:lod3MultiSurface[]\\", 0), 0u);
    EXPECT_EQ(names[3].rfind(L"bldg:Building[b]\\bldg:lod2MultiSurface[]\\", 0), 0u);
}

TEST(DecoderTraversal, SpatialReferenceComesFromTheFirstRootOrTheModel) {
    std::string const mesh = multiSurface("bldg:lod2MultiSurface", {polygon("p", square())});
    // Only the second root names a reference system: nothing is set.
    Decoded d = decode(cityModel(building("a", envelope("", "0 0 0", "1 1 1") + mesh) +
                                 building("b", envelope("EPSG:1", "0 0 0", "1 1 1") + mesh)));
    ASSERT_TRUE(d.geometry());
    EXPECT_FALSE(hasSpatialReference(d));

    // Invalid bounds on the first root: the model's envelope speaks instead.
    d = decode(cityModel(envelope("EPSG:25832", "0 0 0", "9 9 9") +
                         building("a", envelope("EPSG:4326", "5 5 5", "1 1 1") + mesh)));
    ASSERT_TRUE(d.geometry());
    EXPECT_EQ(std::wstring(d.geometry()->getAttributeMap()->getString(L"/georef/spatialReference")),
              L"EPSG:25832");

    // Valid bounds: the root's own name, the model's ignored.
    d = decode(cityModel(envelope("EPSG:25832", "0 0 0", "9 9 9") +
                         building("a", envelope("EPSG:4326", "0 0 0", "1 1 1") + mesh)));
    EXPECT_EQ(std::wstring(d.geometry()->getAttributeMap()->getString(L"/georef/spatialReference")),
              L"EPSG:4326");

    // Valid bounds without a name set nothing, even when the model has one.
    d = decode(cityModel(envelope("EPSG:25832", "0 0 0", "9 9 9") +
                         building("a", envelope("", "0 0 0", "1 1 1") + mesh)));
    EXPECT_FALSE(hasSpatialReference(d));
}

TEST(DecoderTraversal, FilesWithoutPolygonsAddNothing) {
    Decoded d = decode(cityModel(building("a", "<bldg:measuredHeight>3</bldg:measuredHeight>")));
    EXPECT_TRUE(d.results.empty());
    EXPECT_EQ(d.warnings, L"");
    d = decode(cityModel(""));
    EXPECT_TRUE(d.results.empty());
    EXPECT_EQ(d.warnings, L"");
}

TEST(DecoderTraversal, ChildMeshesStandBeforeTheParentsAndExtendItsPath) {
    std::string const part = "<bldg:consistsOfBuildingPart><bldg:BuildingPart gml:id=\"bp\">" +
                             multiSurface("bldg:lod2MultiSurface", {polygon("c", square())}) +
                             "</bldg:BuildingPart></bldg:consistsOfBuildingPart>";
    Decoded const d = decode(cityModel(
        building("b", multiSurface("bldg:lod2MultiSurface", {polygon("p", square())}) + part)));
    std::vector<std::wstring> const names = d.meshNames();
    ASSERT_EQ(names.size(), 2u);
    EXPECT_EQ(names[0], L"bldg:Building[b]\\bldg:consistsOfBuildingPart[]\\bldg:BuildingPart[bp]\\"
                        L"bldg:lod2MultiSurface[]\\gml:MultiSurface[]\\");
    EXPECT_EQ(names[1], L"bldg:Building[b]\\bldg:lod2MultiSurface[]\\gml:MultiSurface[]\\");
}

} // namespace
