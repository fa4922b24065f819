#include "gml/internal/ChildOrdering.h"
#include "gml/BridgeTypeNode.h"
#include "gml/BuildingTypeNode.h"
#include "gml/CityElementNode.h"
#include "gml/ReliefComponentType.h"
#include "gml/TransportationTypeNode.h"
#include "gml/XmlWriter.h"

#include <Files.h>
#include <TestData.h>
#include <gtest/gtest.h>
#include <kolt/StringUtils.h>

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

std::vector<std::wstring> wide(std::vector<std::string> const& words) {
    std::vector<std::wstring> out;
    for (auto const& word : words)
        out.push_back(kolt::StringUtils::toUTF16(word));
    return out;
}

TEST(ChildOrderingTest, LodOfTagMatchesWholeTagsOnly) {
    for (auto const& line : testsupport::tableRows(testsupport::dataFile("gml/lod_of_tag.txt"))) {
        auto const words = testsupport::split(line);
        EXPECT_EQ(gml::lodOfTag(kolt::StringUtils::toUTF16(words.at(0))), std::stoi(words.at(1)))
            << line;
    }
    EXPECT_EQ(gml::lodOfTag(L""), 255);
}

TEST(ChildOrderingTest, TablesOfTheFeatureKindsAndGeneralRules) {
    for (auto const& line :
         testsupport::tableRows(testsupport::dataFile("gml/child_ordering.txt"))) {
        SCOPED_TRACE(line);
        auto const field = testsupport::split(line, " | ");
        auto const kind = wide(testsupport::split(field.at(0)));
        std::shared_ptr<CityElementNode> node;
        if (kind.at(0) == L"building")
            node = makeFeature<gml::BuildingTypeNode>(kind.at(1));
        else if (kind.at(0) == L"bridge")
            node = makeFeature<gml::BridgeTypeNode>(kind.at(1));
        else if (kind.at(0) == L"road")
            node = makeFeature<gml::TransportationTypeNode>(kind.at(1));
        else if (kind.at(0) == L"relief")
            node = makeFeature<gml::ReliefComponentType>(kind.at(1));
        else
            node = std::make_shared<CityElementNode>(L"", false, kind.at(1));
        addChildren(*node, wide(testsupport::split(field.at(2))));
        EXPECT_EQ(sortedTags(*node, std::stoi(field.at(1))), wide(testsupport::split(field.at(3))));
    }
}

TEST(ChildOrderingTest, SortIsStableUpToThirtyTwoChildren) {
    // Children that compare equal keep their insertion order: runs of boundedBy children with
    // one that sorts first, short and at the limit.
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
}

} // namespace
