#include "GmlTestSupport.h"

#include "gml/BasicMaterialAppearanceMemberNode.h"
#include "gml/BuildingTypeNode.h"
#include "gml/CityModelDocument.h"
#include "gml/DocumentWriter.h"
#include "gml/Envelope.h"
#include "gml/XmlWriter.h"

#include <koltx/DefaultNamePreparator.h>

#include <gtest/gtest.h>

#include <sstream>

namespace {

const std::string w3Tail = " xmlns:xal=\"urn:oasis:names:tc:ciq:xal:3\""
                           " xmlns:xlink=\"http://www.w3.org/1999/xlink\""
                           " xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\">\n";
const std::string declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n";

class DocumentWriterTest : public ::testing::Test {
protected:
    std::string write(int precision = 3) {
        std::ostringstream out;
        writeCityModel(document, out, precision);
        return out.str();
    }

    std::shared_ptr<koltx::EncodePreparator> preparator;
    koltx::DefaultNamePreparator names{L"_", L"_"};
    CityModelDocument document{2, preparator, names, names.newNamespace(), nullptr};
};

std::shared_ptr<gml::Envelope> makeEnvelope(std::vector<double> min, std::vector<double> max,
                                            const std::wstring& srsName = L"") {
    return std::make_shared<gml::Envelope>(
        gml::Envelope{koltx::BoundingBox(min.data(), max.data()), srsName});
}

TEST_F(DocumentWriterTest, SmallestDocument) {
    EXPECT_EQ(write(), declaration +
                           "<core:CityModel xmlns=\"http://www.opengis.net/citygml/3.0\""
                           " xmlns:gml=\"http://www.opengis.net/gml/3.2\"" +
                           w3Tail + "</core:CityModel>\n");
}

TEST_F(DocumentWriterTest, SmallVersion2Document) {
    document.version = 2;
    document.usedPrefixes = {L"bldg", L"core"};
    document.memberGroups.push_back({std::make_shared<gml::BuildingTypeNode>(
        gml::AttributeMap(), makeEnvelope({1, 2, 3}, {4, 5, 6}), L"b", false, L"bldg:Building")});
    EXPECT_EQ(write(), declaration +
                           "<core:CityModel xmlns=\"http://www.opengis.net/citygml/2.0\""
                           " xmlns:bldg=\"http://www.opengis.net/citygml/building/2.0\""
                           " xmlns:core=\"http://www.opengis.net/citygml/2.0\""
                           " xmlns:gml=\"http://www.opengis.net/gml\""
                           " xmlns:schemaLocation=\"http://www.opengis.net/citygml/building/2.0"
                           " http://schemas.opengis.net/citygml/building/2.0/building.xsd"
                           " http://www.opengis.net/citygml/2.0"
                           " https://schemas.opengis.net/citygml/2.0/core.xsd\"" +
                           w3Tail +
                           " <core:cityObjectMember>\n"
                           "  <bldg:Building>\n"
                           "  <gml:boundedBy>\n"
                           "   <gml:Envelope srsDimension=\"3\">\n"
                           "    <gml:lowerCorner>1.000 -6.000 2.000 </gml:lowerCorner>\n"
                           "    <gml:upperCorner>4.000 -3.000 5.000 </gml:upperCorner>\n"
                           "   </gml:Envelope>\n"
                           "  </gml:boundedBy>\n"
                           "  </bldg:Building>\n"
                           " </core:cityObjectMember>\n"
                           "</core:CityModel>\n");
}

TEST_F(DocumentWriterTest, EnvelopeWithSpatialReferenceAndAttributes) {
    std::ostringstream out;
    gml::XmlWriter writer(out, 3, 1);
    writer.depth = 2;
    gml::writeEnvelope(writer, *makeEnvelope({-1, 0, 0.25}, {2, 3, 0.5}, L"EPSG:25832"));
    EXPECT_EQ(writer.depth, 2u);
    EXPECT_EQ(out.str(), "  <gml:boundedBy>\n"
                         "   <gml:Envelope srsName=\"EPSG:25832\" srsDimension=\"3\">\n"
                         "    <gml:lowerCorner>-1.0 -0.5 0.0 </gml:lowerCorner>\n"
                         "    <gml:upperCorner>2.0 -0.2 3.0 </gml:upperCorner>\n"
                         "   </gml:Envelope>\n"
                         "  </gml:boundedBy>\n");
    // The envelope comes before the first attribute.
    gml::RootNode node({{L"a", L"1"}}, makeEnvelope({0, 0, 0}, {1, 1, 1}), L"r", false, L"x:R");
    std::ostringstream featureOut;
    gml::XmlWriter featureWriter(featureOut, 2, 0);
    node.write(featureWriter);
    const std::string text = featureOut.str();
    EXPECT_LT(text.find("</gml:boundedBy>"), text.find("<gen:intAttribute"));
}

TEST_F(DocumentWriterTest, NamespaceTablesByVersion) {
    // Every thematic module of version 2 with its published namespace and schema location.
    const std::set<std::wstring> all2 = {L"app", L"bldg", L"brid", L"core",  L"dem", L"frn",
                                         L"gen", L"grp",  L"luse", L"trans", L"tun", L"veg",
                                         L"wtr", L"con",  L"dyn",  L"pcl",   L"gml", L"foo"};
    const gml::NamespaceMap v2 = gml::buildNamespaces(all2, 2);
    EXPECT_EQ(v2.size(), 13u + 1u + 5u);
    EXPECT_EQ(v2.count(L"con") + v2.count(L"dyn") + v2.count(L"pcl") + v2.count(L"foo"), 0u);
    EXPECT_EQ(v2.at(L"gml"), L"http://www.opengis.net/gml");
    EXPECT_EQ(v2.at(L"xal"), L"urn:oasis:names:tc:ciq:xal:3");
    EXPECT_EQ(v2.at(L"frn"), L"http://www.opengis.net/citygml/cityfurniture/2.0");
    EXPECT_EQ(
        v2.at(L"schemaLocation"),
        L"http://www.opengis.net/citygml/appearance/2.0 "
        L"http://schemas.opengis.net/citygml/appearance/2.0/appearance.xsd "
        L"http://www.opengis.net/citygml/building/2.0 "
        L"http://schemas.opengis.net/citygml/building/2.0/building.xsd "
        L"http://www.opengis.net/citygml/bridge/2.0 "
        L"http://schemas.opengis.net/citygml/bridge/2.0/bridge.xsd "
        L"http://www.opengis.net/citygml/2.0 https://schemas.opengis.net/citygml/2.0/core.xsd "
        L"http://www.opengis.net/citygml/relief/2.0 "
        L"http://schemas.opengis.net/citygml/relief/2.0/relief.xsd "
        L"http://www.opengis.net/citygml/cityfurniture/2.0 "
        L"http://schemas.opengis.net/citygml/cityfurniture/2.0/cityFurniture.xsd "
        L"http://www.opengis.net/citygml/generics/2.0 "
        L"http://schemas.opengis.net/citygml/generics/2.0/generics.xsd "
        L"http://www.opengis.net/citygml/cityobjectgroup/2.0 "
        L"http://schemas.opengis.net/citygml/cityobjectgroup/2.0/cityObjectGroup.xsd "
        L"http://www.opengis.net/citygml/landuse/2.0 "
        L"http://schemas.opengis.net/citygml/landuse/2.0/landUse.xsd "
        L"http://www.opengis.net/citygml/transportation/2.0 "
        L"http://schemas.opengis.net/citygml/transportation/2.0/transportation.xsd "
        L"http://www.opengis.net/citygml/tunnel/2.0 "
        L"http://schemas.opengis.net/citygml/tunnel/2.0/tunnel.xsd "
        L"http://www.opengis.net/citygml/vegetation/2.0 "
        L"http://schemas.opengis.net/citygml/vegetation/2.0/vegetation.xsd "
        L"http://www.opengis.net/citygml/waterbody/2.0 "
        L"http://schemas.opengis.net/citygml/waterbody/2.0/waterBody.xsd");

    const gml::NamespaceMap v3 = gml::buildNamespaces(all2, 3);
    EXPECT_EQ(v3.size(), 16u + 1u + 5u);
    EXPECT_EQ(v3.at(L""), L"http://www.opengis.net/citygml/3.0");
    EXPECT_EQ(v3.at(L"gml"), L"http://www.opengis.net/gml/3.2");
    EXPECT_EQ(v3.at(L"dyn"), L"http://www.opengis.net/citygml/dynamizer/3.0/");
    EXPECT_EQ(v3.at(L"core"), L"http://www.opengis.net/citygml/3.0");
    EXPECT_EQ(v3.at(L"xsi"), L"http://www.w3.org/2001/XMLSchema-instance");
    EXPECT_EQ(v3.at(L"xlink"), L"http://www.w3.org/1999/xlink");
    const std::wstring& location3 = v3.at(L"schemaLocation");
    for (const wchar_t* part :
         {L"http://www.opengis.net/citygml/construction/3.0 "
          L"http://schemas.opengis.net/citygml/construction/3.0/construction.xsd",
          L"http://www.opengis.net/citygml/3.0 https://schemas.opengis.net/citygml/3.0/core.xsd",
          L"http://www.opengis.net/citygml/dynamizer/3.0/ "
          L"http://schemas.opengis.net/citygml/dynamizer/3.0/dynamizer.xsd",
          L"http://www.opengis.net/citygml/pointcloud/3.0 "
          L"http://schemas.opengis.net/citygml/pointcloud/3.0/pointCloud.xsd",
          L"http://www.opengis.net/citygml/waterbody/3.0 "
          L"http://schemas.opengis.net/citygml/waterbody/3.0/waterBody.xsd"})
        EXPECT_NE(location3.find(part), std::wstring::npos);
    // Any version but 2 takes the 3.0 tables.
    EXPECT_EQ(gml::buildNamespaces(all2, 4), v3);
    EXPECT_EQ(gml::buildNamespaces(all2, 1), v3);
}

TEST_F(DocumentWriterTest, SchemaLocationEdgeCases) {
    // Only "gml" or unknown prefixes: no schemaLocation at all, and no duplicate "gml".
    const gml::NamespaceMap gmlOnly = gml::buildNamespaces({L"gml", L"foo"}, 2);
    EXPECT_EQ(gmlOnly.count(L"schemaLocation"), 0u);
    EXPECT_EQ(gmlOnly.size(), 5u);
    EXPECT_EQ(gmlOnly.at(L"gml"), L"http://www.opengis.net/gml");
    // Three modules: six items, single blanks, none at the end.
    const gml::NamespaceMap three = gml::buildNamespaces({L"app", L"gen", L"veg"}, 3);
    const std::wstring& location = three.at(L"schemaLocation");
    std::size_t blanks = 0;
    for (wchar_t c : location)
        blanks += c == L' ';
    EXPECT_EQ(blanks, 5u);
    EXPECT_NE(location.back(), L' ');
    EXPECT_EQ(location.find(L"  "), std::wstring::npos);
    EXPECT_EQ(gml::buildSchemaLocation({{L"", L"x"}, {L"xsi", L"y"}}, 3), L"");
}

TEST_F(DocumentWriterTest, MembersAndAppearanceWrappers) {
    document.usedPrefixes = {L"app", L"core", L"frn"};
    auto first = std::make_shared<gml::RootNode>(gml::AttributeMap(), nullptr, L"a", false,
                                                 L"frn:CityFurniture");
    auto second = std::make_shared<gml::RootNode>(gml::AttributeMap(), nullptr, L"b", false,
                                                  L"frn:CityFurniture");
    document.memberGroups.push_back({first, second});
    document.memberGroups.push_back({});
    document.memberGroups.push_back({first});
    auto material = koltx::MaterialBuilder().createSharedAndReset(nullptr);
    document.appearanceMembers.push_back(
        std::make_shared<gml::BasicMaterialAppearanceMemberNode>(material));
    const std::string v3 = write();
    std::size_t members = 0;
    for (std::size_t at = v3.find("<core:cityObjectMember>"); at != std::string::npos;
         at = v3.find("<core:cityObjectMember>", at + 1))
        ++members;
    EXPECT_EQ(members, 3u);
    EXPECT_NE(v3.find(" <core:appearanceMember>\n  <app:Appearance>\n   <app:surfaceData>\n"),
              std::string::npos);
    EXPECT_NE(v3.find("  </app:Appearance>\n </core:appearanceMember>\n</core:CityModel>\n"),
              std::string::npos);
    EXPECT_LT(v3.rfind("</core:cityObjectMember>"), v3.find("<core:appearanceMember>"));

    document.version = 2;
    const std::string v2 = write();
    EXPECT_NE(v2.find(" <app:appearanceMember>\n  <app:Appearance>\n   <app:surfaceDataMember>\n"),
              std::string::npos);
    EXPECT_NE(v2.find(" xmlns:app=\"http://www.opengis.net/citygml/appearance/2.0\""),
              std::string::npos);
}

} // namespace
