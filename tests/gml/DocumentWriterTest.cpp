#include "GmlTestSupport.h"

#include "gml/BasicMaterialAppearanceMemberNode.h"
#include "gml/CityModelDocument.h"
#include "gml/DocumentWriter.h"
#include "gml/RootNode.h"

#include <koltx/DefaultNamePreparator.h>
#include <koltx/MaterialBuilder.h>

#include <Files.h>
#include <Golden.h>
#include <kolt/StringUtils.h>

namespace {

using testsupport::countOf;

// Every prefix of either version, the geometry one and an unknown one.
std::set<std::wstring> const allPrefixes = {L"app", L"bldg", L"brid", L"core",  L"dem", L"frn",
                                            L"gen", L"grp",  L"luse", L"trans", L"tun", L"veg",
                                            L"wtr", L"con",  L"dyn",  L"pcl",   L"gml", L"foo"};

TEST(DocumentWriter, NamespaceTablesByVersion) {
    std::string text;
    for (int version : {2, 3}) {
        text += "# version " + std::to_string(version) + "\n";
        for (auto const& [prefix, value] : gml::buildNamespaces(allPrefixes, version))
            text += kolt::StringUtils::toUTF8(prefix + L" = " + value) + "\n";
    }
    EXPECT_TRUE(testsupport::matchesGolden("gml/namespaces.txt", text));
    // Any version but 2 takes the 3.0 tables.
    EXPECT_EQ(gml::buildNamespaces(allPrefixes, 4), gml::buildNamespaces(allPrefixes, 3));
    EXPECT_EQ(gml::buildNamespaces(allPrefixes, 1), gml::buildNamespaces(allPrefixes, 3));
}

TEST(DocumentWriter, SchemaLocationEdgeCases) {
    // Only "gml" or unknown prefixes: no schemaLocation at all, and no duplicate "gml".
    gml::NamespaceMap const gmlOnly = gml::buildNamespaces({L"gml", L"foo"}, 2);
    EXPECT_EQ(gmlOnly.count(L"schemaLocation"), 0u);
    EXPECT_EQ(gmlOnly.size(), 5u);
    // Three modules: six items, single blanks, none at the end.
    std::wstring const location =
        gml::buildNamespaces({L"app", L"gen", L"veg"}, 3).at(L"schemaLocation");
    EXPECT_EQ(std::count(location.begin(), location.end(), L' '), 5);
    EXPECT_NE(location.back(), L' ');
    EXPECT_EQ(gml::buildSchemaLocation({{L"", L"x"}, {L"xsi", L"y"}}, 3), L"");
}

TEST(DocumentWriter, MembersAndAppearanceWrappers) {
    std::shared_ptr<koltx::EncodePreparator> preparator;
    koltx::DefaultNamePreparator names{L"_", L"_"};
    CityModelDocument document{2, preparator, names, names.newNamespace(), nullptr};
    auto const write = [&] {
        std::ostringstream out;
        writeCityModel(document, out, 3);
        return out.str();
    };
    std::string const smallest = write();
    document.usedPrefixes = {L"app", L"core", L"frn"};
    auto first = std::make_shared<gml::RootNode>(gml::AttributeMap(), nullptr, L"a", false,
                                                 L"frn:CityFurniture");
    auto second = std::make_shared<gml::RootNode>(gml::AttributeMap(), nullptr, L"b", false,
                                                  L"frn:CityFurniture");
    document.memberGroups = {{first, second}, {}, {first}};
    document.appearanceMembers.push_back(std::make_shared<gml::BasicMaterialAppearanceMemberNode>(
        koltx::MaterialBuilder().createSharedAndReset(nullptr)));
    std::string const v3 = write();
    document.version = 2;
    std::string const v2 = write();
    EXPECT_TRUE(testsupport::matchesGolden("gml/members.gml", smallest + "<!-- 3.0 -->\n" + v3 +
                                                                  "<!-- 2.0 -->\n" + v2));
    EXPECT_EQ(countOf(v3, "<core:cityObjectMember>"), 3u);
    EXPECT_LT(v3.rfind("</core:cityObjectMember>"), v3.find("<core:appearanceMember>"));
}

} // namespace
