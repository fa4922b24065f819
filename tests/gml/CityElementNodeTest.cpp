#include "gml/CityElementNode.h"
#include "gml/ReliefComponentType.h"
#include "gml/RootNode.h"
#include "gml/XmlWriter.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

using gml::CityElementNode;

std::string writeAt(CityElementNode& node, std::uint32_t depth, int version = 3) {
    std::ostringstream out;
    gml::XmlWriter writer(out, version, 3);
    writer.depth = depth;
    node.write(writer);
    EXPECT_EQ(writer.depth, depth);
    return out.str();
}

std::shared_ptr<CityElementNode> plain(const std::wstring& id, const std::wstring& tag,
                                       bool writeId = false) {
    return std::make_shared<CityElementNode>(id, writeId, tag);
}

TEST(CityElementNodeTest, ReliefFeatureWritesItsLodLines) {
    auto relief = std::make_shared<gml::ReliefComponentType>(gml::AttributeMap(), nullptr, L"r",
                                                             false, L"dem:ReliefFeature");
    auto component = plain(L"c", L"dem:reliefComponent");
    component->addChild(plain(L"t", L"dem:TINRelief"));
    relief->addChild(component);
    std::ostringstream out;
    gml::XmlWriter writer(out, 2, 3);
    writer.startElement(L"core:cityObjectMember");
    relief->write(writer);
    writer.endElement();
    EXPECT_EQ(out.str(), " <core:cityObjectMember>\n"
                         "  <dem:ReliefFeature>\n"
                         "  <dem:lod>0</dem:lod>\n"
                         "   <dem:reliefComponent>\n"
                         "    <dem:TINRelief>\n"
                         "    <dem:lod>0</dem:lod>\n"
                         "    </dem:TINRelief>\n"
                         "   </dem:reliefComponent>\n"
                         "  </dem:ReliefFeature>\n"
                         " </core:cityObjectMember>\n");
}

TEST(CityElementNodeTest, ReliefLodDependsOnExactTagsOrClass) {
    auto grid = plain(L"", L"dem:grid");
    EXPECT_EQ(writeAt(*grid, 0), " <dem:grid>\n <dem:lod>0</dem:lod>\n </dem:grid>\n");
    auto lower = plain(L"", L"dem:tinrelief");
    EXPECT_EQ(writeAt(*lower, 0), " <dem:tinrelief>\n </dem:tinrelief>\n");
    auto anyTag = std::make_shared<gml::ReliefComponentType>(gml::AttributeMap(), nullptr, L"",
                                                             false, L"x:Whatever");
    EXPECT_EQ(writeAt(*anyTag, 1), "  <x:Whatever>\n  <dem:lod>0</dem:lod>\n  </x:Whatever>\n");
}

TEST(CityElementNodeTest, UnknownNodesLeaveOnlyTheirContent) {
    auto parent = plain(L"p", L"a:parent");
    auto unknown = plain(L"u", L"Unknown", true);
    unknown->addChild(plain(L"c", L"a:child"));
    parent->addChild(unknown);
    EXPECT_EQ(writeAt(*parent, 0), " <a:parent>\n"
                                   "  <a:child>\n"
                                   "  </a:child>\n"
                                   " </a:parent>\n");
    // Only the exact spelling vanishes.
    auto lower = plain(L"u", L"unknown");
    EXPECT_EQ(writeAt(*lower, 0), " <unknown>\n </unknown>\n");
    // An unknown relief tag writes no "dem:lod" either.
    auto reliefUnknown = std::make_shared<gml::ReliefComponentType>(gml::AttributeMap(), nullptr,
                                                                    L"", false, L"Unknown");
    EXPECT_EQ(writeAt(*reliefUnknown, 0), "");
}

TEST(CityElementNodeTest, IdsAreWrittenOnlyWhenAskedAndPresent) {
    EXPECT_EQ(writeAt(*plain(L"id1", L"a:x", false), 0), " <a:x>\n </a:x>\n");
    EXPECT_EQ(writeAt(*plain(L"", L"a:x", true), 0), " <a:x>\n </a:x>\n");
    EXPECT_EQ(writeAt(*plain(L"id1", L"a:x", true), 0), " <a:x gml:id=\"id1\">\n </a:x>\n");
    auto root = std::make_shared<gml::RootNode>(gml::AttributeMap(), nullptr, L"b1", false,
                                                L"bldg:Building");
    EXPECT_EQ(writeAt(*root, 1), "  <bldg:Building>\n  </bldg:Building>\n");
}

TEST(CityElementNodeTest, ChildrenAreFoundByIdAlone) {
    CityElementNode parent(L"p", false, L"a:p");
    parent.addChild(nullptr);
    EXPECT_TRUE(parent.children.empty());
    auto first = plain(L"", L"a:first");
    auto second = plain(L"x", L"a:second");
    auto third = plain(L"", L"a:third");
    parent.addChild(first);
    parent.addChild(second);
    parent.addChild(third);
    EXPECT_EQ(parent.findChild(L""), first);
    EXPECT_EQ(parent.findChild(L"x"), second);
    EXPECT_EQ(parent.findChild(L"xx"), nullptr);
    EXPECT_EQ(parent.findChild(std::wstring(L"x\0", 2)), nullptr);
    ASSERT_EQ(parent.children.size(), 3u);
}

} // namespace
