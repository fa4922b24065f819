#include "gml/internal/ChildOrdering.h"
#include "gml/BridgeTypeNode.h"
#include "gml/BuildingTypeNode.h"
#include "gml/CityElementNode.h"
#include "gml/ReliefComponentType.h"
#include "gml/TransportationTypeNode.h"
#include "gml/XmlWriter.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

using gml::CityElementNode;

template <typename Node> std::shared_ptr<Node> makeFeature(std::wstring const& tag) {
    return std::make_shared<Node>(gml::AttributeMap(), nullptr, L"f", false, tag);
}

// Adds one plain child per tag; the child's id records its insertion position.
void addChildren(CityElementNode& parent, std::vector<std::wstring> const& tags) {
    for (std::size_t i = 0; i < tags.size(); ++i)
        parent.addChild(std::make_shared<CityElementNode>(std::to_wstring(i), false, tags[i]));
}

std::vector<std::wstring> sortedTags(CityElementNode& node, int version) {
    std::ostringstream out;
    gml::XmlWriter writer(out, version, 3);
    node.sortChildren(writer);
    std::vector<std::wstring> tags;
    for (auto const& child : node.children)
        tags.push_back(child->tag);
    return tags;
}

TEST(ChildOrderingTest, LodOfTagMatchesWholeTagsOnly) {
    EXPECT_EQ(gml::lodOfTag(L"bldg:lod2Solid"), 2);
    EXPECT_EQ(gml::lodOfTag(L"bldg:lod3MultiSurface"), 3);
    EXPECT_EQ(gml::lodOfTag(L"gen:lod1Geometry"), 1);
    EXPECT_EQ(gml::lodOfTag(L"dem:lod0multicurve"), 0);
    EXPECT_EQ(gml::lodOfTag(L"veg:lod5Point"), 5);
    EXPECT_EQ(gml::lodOfTag(L"bldg:lod2TerrainIntersection"), 255);
    EXPECT_EQ(gml::lodOfTag(L"bldg:lod0FootPrint"), 255);
    EXPECT_EQ(gml::lodOfTag(L"bldg:boundedBy"), 255);
    EXPECT_EQ(gml::lodOfTag(L"bldg:lod6Solid"), 255);
    EXPECT_EQ(gml::lodOfTag(L"bldg:lod2multiSurface"), 255);
    EXPECT_EQ(gml::lodOfTag(L"bldg:lod2SolidX"), 255);
    EXPECT_EQ(gml::lodOfTag(L"lod2Solid"), 255);
    EXPECT_EQ(gml::lodOfTag(L""), 255);
}

TEST(ChildOrderingTest, BuildingTableAndGeneralRules) {
    const std::vector<std::wstring> tags = {L"bldg:boundedBy", L"bldg:lod2Solid", L"bldg:address",
                                            L"foo:bar"};
    auto building = makeFeature<gml::BuildingTypeNode>(L"bldg:Building");
    addChildren(*building, tags);
    EXPECT_EQ(sortedTags(*building, 2),
              (std::vector<std::wstring>{L"bldg:lod2Solid", L"bldg:boundedBy", L"bldg:address",
                                         L"foo:bar"}));

    auto modern = makeFeature<gml::BuildingTypeNode>(L"bldg:Building");
    addChildren(*modern, tags);
    EXPECT_EQ(sortedTags(*modern, 3),
              (std::vector<std::wstring>{L"bldg:lod2Solid", L"bldg:boundedBy", L"bldg:address",
                                         L"foo:bar"}));
    // The version 3 rule keeps the 255-valued tags in insertion order.
    auto modern2 = makeFeature<gml::BuildingTypeNode>(L"bldg:Building");
    addChildren(*modern2, {L"bldg:address", L"foo:bar", L"bldg:boundedBy", L"bldg:lod2Solid"});
    EXPECT_EQ(sortedTags(*modern2, 3),
              (std::vector<std::wstring>{L"bldg:lod2Solid", L"bldg:address", L"foo:bar",
                                         L"bldg:boundedBy"}));

    // The table puts boundedBy before lod3, the general rule after it.
    auto tabled = makeFeature<gml::BuildingTypeNode>(L"bldg:Building");
    addChildren(*tabled, {L"bldg:lod3Solid", L"bldg:boundedBy"});
    EXPECT_EQ(sortedTags(*tabled, 2),
              (std::vector<std::wstring>{L"bldg:boundedBy", L"bldg:lod3Solid"}));
    CityElementNode plain(L"p", false, L"bldg:BuildingPart");
    addChildren(plain, {L"bldg:boundedBy", L"bldg:lod3Solid"});
    EXPECT_EQ(sortedTags(plain, 2),
              (std::vector<std::wstring>{L"bldg:lod3Solid", L"bldg:boundedBy"}));

    // Below version 2 nothing moves.
    auto old = makeFeature<gml::BuildingTypeNode>(L"bldg:Building");
    addChildren(*old, tags);
    EXPECT_EQ(sortedTags(*old, 1), tags);
}

TEST(ChildOrderingTest, GeneralRulesOfBothVersions) {
    CityElementNode v2(L"", false, L"x:y");
    addChildren(v2, {L"a:boundedBy", L"a:lod3Solid", L"a:other", L"a:lod1Solid", L"Unknown"});
    EXPECT_EQ(sortedTags(v2, 2),
              (std::vector<std::wstring>{L"a:lod1Solid", L"a:lod3Solid", L"a:other", L"Unknown",
                                         L"a:boundedBy"}));
    CityElementNode v3(L"", false, L"x:y");
    addChildren(v3, {L"bldg:lod1Solid", L"x:other", L"trans:section", L"core:boundary",
                     L"trans:sectionX", L"core:boundaryX"});
    EXPECT_EQ(sortedTags(v3, 3),
              (std::vector<std::wstring>{L"core:boundary", L"bldg:lod1Solid", L"trans:section",
                                         L"x:other", L"trans:sectionX", L"core:boundaryX"}));
    CityElementNode newer(L"", false, L"x:y");
    addChildren(newer, {L"a:lod4Solid", L"core:boundary"});
    EXPECT_EQ(sortedTags(newer, 4), (std::vector<std::wstring>{L"core:boundary", L"a:lod4Solid"}));
}

TEST(ChildOrderingTest, BridgeTransportationAndReliefTables) {
    auto bridge = makeFeature<gml::BridgeTypeNode>(L"brid:Bridge");
    addChildren(*bridge, {L"brid:address", L"x:y", L"brid:boundedBy", L"brid:isMovable",
                          L"brid:lod2Solid", L"brid:class"});
    EXPECT_EQ(sortedTags(*bridge, 2),
              (std::vector<std::wstring>{L"brid:class", L"brid:isMovable", L"brid:lod2Solid",
                                         L"brid:boundedBy", L"brid:address", L"x:y"}));
    auto road = makeFeature<gml::TransportationTypeNode>(L"trans:Road");
    addChildren(*road, {L"trans:lod2MultiSurface", L"trans:trafficArea", L"trans:lod1MultiSurface",
                        L"trans:function"});
    EXPECT_EQ(sortedTags(*road, 2),
              (std::vector<std::wstring>{L"trans:function", L"trans:trafficArea",
                                         L"trans:lod1MultiSurface", L"trans:lod2MultiSurface"}));
    // In version 3 the transportation table gives way to the general rule.
    auto road3 = makeFeature<gml::TransportationTypeNode>(L"trans:Road");
    addChildren(*road3, {L"trans:trafficArea", L"trans:section", L"trans:lod2MultiSurface"});
    EXPECT_EQ(sortedTags(*road3, 3),
              (std::vector<std::wstring>{L"trans:lod2MultiSurface", L"trans:section",
                                         L"trans:trafficArea"}));
    // The relief table holds in every version.
    for (int version : {1, 2, 3}) {
        auto relief = makeFeature<gml::ReliefComponentType>(L"dem:ReliefFeature");
        addChildren(*relief, {L"x:a", L"dem:reliefComponent", L"dem:lod"});
        EXPECT_EQ(sortedTags(*relief, version),
                  (std::vector<std::wstring>{L"dem:lod", L"dem:reliefComponent", L"x:a"}));
    }
}

TEST(ChildOrderingTest, SortIsStableUpToThirtyTwoChildren) {
    // Children that compare equal keep their insertion order: 31 boundedBy children mixed with
    // one that sorts first, and a run of 32 with identical tags.
    for (std::size_t count : {17u, 31u, 32u}) {
        auto building = makeFeature<gml::BuildingTypeNode>(L"bldg:Building");
        std::vector<std::wstring> tags(count, L"bldg:boundedBy");
        tags[count / 2] = L"bldg:lod1Solid";
        addChildren(*building, tags);
        std::ostringstream out;
        gml::XmlWriter writer(out, 2, 3);
        building->sortChildren(writer);
        ASSERT_EQ(building->children.size(), count);
        EXPECT_EQ(building->children[0]->tag, L"bldg:lod1Solid");
        std::vector<int> order;
        for (std::size_t i = 1; i < count; ++i)
            order.push_back(std::stoi(building->children[i]->id));
        EXPECT_TRUE(std::is_sorted(order.begin(), order.end())) << count;
    }
    CityElementNode mixed(L"", false, L"x:y");
    std::vector<std::wstring> tags;
    for (int i = 0; i < 32; ++i)
        tags.push_back(i % 3 == 0 ? L"a:lod2Solid" : (i % 3 == 1 ? L"a:boundedBy" : L"a:z"));
    addChildren(mixed, tags);
    std::ostringstream out;
    gml::XmlWriter writer(out, 2, 3);
    mixed.sortChildren(writer);
    for (std::size_t i = 1; i < mixed.children.size(); ++i) {
        auto const& previous = mixed.children[i - 1];
        auto const& current = mixed.children[i];
        ASSERT_FALSE(gml::lodThenBoundedByLast(current->tag, previous->tag));
        if (previous->tag == current->tag) {
            EXPECT_LT(std::stoi(previous->id), std::stoi(current->id));
        }
    }
}

TEST(ChildOrderingTest, LongListsAreSortedToo) {
    CityElementNode parent(L"", false, L"x:y");
    std::vector<std::wstring> tags;
    for (int i = 0; i < 100; ++i)
        tags.push_back(L"a:lod" + std::to_wstring(5 - i % 6) + L"Solid");
    addChildren(parent, tags);
    auto const sorted = sortedTags(parent, 2);
    for (std::size_t i = 1; i < sorted.size(); ++i)
        EXPECT_LE(gml::lodOfTag(sorted[i - 1]), gml::lodOfTag(sorted[i]));
}

} // namespace
