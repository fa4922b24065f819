// Every node kind writes its exact text, in both versions where they differ; the texts stand in
// tests/golden/gml/nodes.txt, one section per case.
#include "GmlTestSupport.h"

#include "gml/BasicMaterialAppearanceMemberNode.h"
#include "gml/DocumentWriter.h"
#include "gml/Envelope.h"
#include "gml/GeometryNode.h"
#include "gml/PolygonNode.h"
#include "gml/ReliefComponentType.h"
#include "gml/RootNode.h"
#include "gml/TextureAppearanceMemberNode.h"

#include <koltx/MaterialBuilder.h>

#include <Golden.h>

#include <functional>

namespace {

using gml::CityElementNode;
using gml::GeometryNode;
using gml::PolygonNode;
using gmltest::referenceId;
using gmltest::writeAt;
using Nodes = std::vector<std::shared_ptr<CityElementNode>>;

std::shared_ptr<CityElementNode> plain(std::wstring const& id, std::wstring const& tag,
                                       bool writeId = false, Nodes const& children = {}) {
    auto node = std::make_shared<CityElementNode>(id, writeId, tag);
    for (auto const& child : children)
        node->addChild(child);
    return node;
}

std::shared_ptr<GeometryNode> geometry(std::wstring const& tag, Nodes const& children = {},
                                       std::wstring const& id = L"g", bool writeId = false) {
    auto node = std::make_shared<GeometryNode>(id, writeId, tag, gmltest::triangle());
    for (auto const& child : children)
        node->addChild(child);
    return node;
}

std::shared_ptr<PolygonNode> polygon(std::wstring const& surfaceTag,
                                     std::shared_ptr<koltx::Mesh> const& mesh = gmltest::triangle(),
                                     std::wstring const& id = L"p", std::uint32_t face = 0) {
    return std::make_shared<PolygonNode>(mesh, id, face, surfaceTag);
}

std::string both(CityElementNode& node, std::uint32_t depth = 0) {
    return "# version 2\n" + writeAt(node, depth, 2) + "# version 3\n" + writeAt(node, depth, 3);
}

std::string feature(gml::AttributeMap const& attributes, int version, Nodes const& children = {}) {
    gml::RootNode node(attributes, nullptr, L"f", false, L"x:F");
    for (auto const& child : children)
        node.addChild(child);
    return writeAt(node, 1, version);
}

std::shared_ptr<koltx::Material> wallMaterial() {
    return koltx::MaterialBuilder()
        .name(L"wall")
        .ambientColor({0.2, 0.2, 0.2})
        .diffuseColor({0.8, 0.8, 0.8})
        .emissiveColor({0, 0, 0})
        .specularColor({1, 1, 1})
        .shininess(0.5)
        .opacity(0.75)
        .createSharedAndReset(nullptr);
}

std::wstring const polygonId = referenceId + L"_poly0";
std::wstring const ringId = polygonId + L".e81b7d02-3a64-49f0-b5d3-77a1c40e92fb";

std::string member(gml::AppearanceMemberNode& node) {
    return "# version 2\n" + writeAt(node, 2, 2) + "# version 3\n" + writeAt(node, 2, 3);
}

std::vector<std::pair<char const*, std::function<std::string()>>> const cases = {
    {"polygon of the reference quad",
     [] {
         PolygonNode node(gmltest::referenceQuad(), referenceId, 0, L"gml:MultiSurface");
         return both(node, 5);
     }},
    {"polygon forms by surface tag",
     [] {
         std::string text;
         for (auto const* tag : {L"gml:Surface", L"gml:TriangulatedSurface",
                                 L"gml:OrientableSurface", L"gml:surface"})
             text += writeAt(*polygon(tag, gmltest::referenceQuad(), referenceId), 0);
         return text;
     }},
    {"rings are closed, repeated last vertex too, precision 0",
     [] {
         auto mesh = fixtures::meshOf({{1, 2, 0}, {4, 5, -10}, {7, 8, 9}, {1, 2, 0}},
                                      {{0, 1, 2}, {0, 1, 2, 3}});
         return writeAt(*polygon(L"gml:CompositeSurface", mesh, L"a", 0), 0, 3, 0) +
                writeAt(*polygon(L"gml:CompositeSurface", mesh, L"a", 1), 0, 3, 0);
     }},
    {"multi surface and surface",
     [] {
         auto multi = geometry(L"gml:MultiSurface",
                               {polygon(L"gml:MultiSurface", gmltest::triangle(), referenceId)},
                               L"g1", true);
         auto surface = geometry(L"gml:Surface", {polygon(L"gml:Surface")}, L"g2", true);
         return writeAt(*multi, 3) + writeAt(*surface, 3);
     }},
    {"property elements of empty geometries",
     [] {
         return writeAt(*geometry(L"gml:Solid"), 0) +
                writeAt(*geometry(L"gml:MultiSurface", {}, L"m", true), 0) +
                both(*geometry(L"gml:TriangulatedSurface"));
     }},
    {"solid around a composite surface, and around bare polygons",
     [] {
         auto composite = geometry(
             L"gml:Solid", {geometry(L"gml:CompositeSurface", {polygon(L"gml:CompositeSurface")})});
         return writeAt(*composite, 0) +
                writeAt(*geometry(L"gml:Solid", {polygon(L"gml:Solid")}), 0);
     }},
    {"orientable surface writes through its polygons, its own id hidden",
     [] {
         auto orientable = geometry(L"gml:OrientableSurface",
                                    {polygon(L"gml:OrientableSurface"),
                                     polygon(L"gml:OrientableSurface", gmltest::triangle(), L"q")},
                                    L"hiddenId", true);
         return writeAt(*geometry(L"gml:MultiSurface", {orientable}, L"m"), 0);
     }},
    {"geometry children keep their creation order",
     [] {
         return writeAt(*geometry(L"gml:MultiGeometry",
                                  {geometry(L"gml:boundedBy"), geometry(L"x:lod1Solid")}),
                        0, 2);
     }},
    {"relief feature and its components write their level of detail",
     [] {
         gml::ReliefComponentType relief(gml::AttributeMap(), nullptr, L"r", false,
                                         L"dem:ReliefFeature");
         relief.addChild(
             plain(L"c", L"dem:reliefComponent", false, {plain(L"t", L"dem:TINRelief")}));
         gml::ReliefComponentType anyTag(gml::AttributeMap(), nullptr, L"", false, L"x:Whatever");
         gml::ReliefComponentType unknown(gml::AttributeMap(), nullptr, L"", false, L"Unknown");
         return writeAt(relief, 1, 2) + writeAt(*plain(L"", L"dem:grid"), 0) +
                writeAt(*plain(L"", L"dem:tinrelief"), 0) + writeAt(anyTag, 1) +
                writeAt(unknown, 0);
     }},
    {"unknown nodes leave only their content; ids only when asked and present",
     [] {
         gml::RootNode root(gml::AttributeMap(), nullptr, L"b1", false, L"bldg:Building");
         return writeAt(*plain(L"p", L"a:parent", false,
                               {plain(L"u", L"Unknown", true, {plain(L"c", L"a:child")})}),
                        0) +
                writeAt(*plain(L"u", L"unknown"), 0) + writeAt(*plain(L"id1", L"a:x"), 0) +
                writeAt(*plain(L"", L"a:x", true), 0) + writeAt(*plain(L"id1", L"a:x", true), 0) +
                writeAt(root, 1);
     }},
    {"generic attributes, qualified names as elements",
     [] {
         gml::AttributeMap const attributes = {{L"floors", L"3"}, {L"g:x", L"y"}};
         return feature(attributes, 2) + feature(attributes, 3);
     }},
    {"attribute types by the look of the value",
     [] {
         std::string text;
         for (auto const* value :
              {L"42",          L"-7",   L" 42",      L"007",       L"+5",  L"42 ",   L"2147483648",
               L"-2147483648", L"1.5",  L"3.000000", L"0.1234567", L"1e3", L"1e400", L"1e-400",
               L"nan",         L"0x10", L"true",     L"false",     L"",    L"a<b"})
             text += feature({{L"k", value}}, 2);
         return text + feature({{L"d", L"2.5"}, {L"s", L"text"}}, 3);
     }},
    {"attributes in code-unit order, ahead of sorted children",
     [] {
         return feature(
                    {{L"b", L"x"}, {L"a", L"x"}, {L"bldg:storeysAboveGround", L"042"}, {L"", L"v"}},
                    2) +
                feature({{L"z", L"1"}}, 2,
                        {plain(L"1", L"a:boundedBy"), plain(L"2", L"a:lod2Solid")});
     }},
    {"material member",
     [] {
         gml::BasicMaterialAppearanceMemberNode node(wallMaterial());
         node.addTarget(polygonId, ringId, nullptr, 0);
         return member(node);
     }},
    {"material member: targets sorted and unique, shininess limited",
     [] {
         gml::BasicMaterialAppearanceMemberNode node(
             koltx::MaterialBuilder().shininess(20.0).createSharedAndReset(nullptr));
         std::string const bare = writeAt(node, 2, 2);
         node.addTarget(L"b_poly1", L"r1", nullptr, 1);
         node.addTarget(L"a_poly7", L"r2", nullptr, 7);
         node.addTarget(L"", L"r3", nullptr, 0);
         node.addTarget(L"", L"r4", nullptr, 1);
         return bare + writeAt(node, 2, 2);
     }},
    {"texture member",
     [] {
         gml::TextureAppearanceMemberNode node(L"wall", gmltest::makeTexture(1), L"wall.png");
         node.addTarget(polygonId, ringId, gmltest::referenceQuad(), 0);
         return member(node);
     }},
    {"texture member: no targets, then a patch and a face without UVs",
     [] {
         gml::TextureAppearanceMemberNode node(L"wall", gmltest::makeTexture(1), L"img/wall.png");
         std::string const bare = writeAt(node, 2, 2);
         auto mesh = fixtures::meshOf({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}}, {{0, 1, 2}, {0, 2, 1}},
                                      {{0.12345, 0.5, 1, 0, 1, 1}});
         node.addTarget(L"", L"ring1", mesh, 0);
         node.addTarget(L"x", L"ring2", mesh, 1);
         return bare + member(node);
     }},
    {"envelope with a spatial reference",
     [] {
         std::ostringstream out;
         gml::XmlWriter writer(out, 3, 1);
         writer.depth = 2;
         std::vector<double> const min = {-1, 0, 0.25}, max = {2, 3, 0.5};
         gml::writeEnvelope(
             writer, gml::Envelope{koltx::BoundingBox(min.data(), max.data()), L"EPSG:25832"});
         EXPECT_EQ(writer.depth, 2u);
         return out.str();
     }},
    {"writer primitives",
     [] {
         std::ostringstream out;
         gml::XmlWriter writer(out, 3, 1);
         writer.startElement(L"a:x", L"i1", {});
         writer.startElement(L"a:y", L"", {{L"k", L"v"}, {L"b", L"c"}});
         writer.writeTextElement(L"a:t", L"hi");
         writer.writeCoordinatesElement(L"a:p", {1, 2, 3, 4}, 2, {});
         writer.endElement();
         writer.endElement();
         gml::XmlWriter edge(out, 2, 0);
         edge.depth = 2;
         // Empty text is never an empty-element tag; text is written unescaped.
         edge.writeTextElement(L"a:t", L"");
         edge.startElement(L"a:e", L"", {{L"b", L"1"}, {L"a", L"2"}});
         edge.writeCoordinatesElement(L"a:c", {}, 3, {});
         edge.writeCoordinatesElement(L"a:d", {1.25, 2}, 5, {{L"n", L"3"}});
         edge.writeCoordinatesElement(L"a:f", {12.4}, 0, {});
         edge.writeTextElement(L"a:u", L"<&\"");
         edge.writeColorElement(L"a:col", {1.0, 0.8, 0.123456789, 99});
         edge.writeTextElement(L"a:s", 0.1);
         edge.endElement();
         gml::XmlWriter wide(out, 3, 3);
         wide.startElement(L"a:stra\u00dfe", L"\u6771", {{L"n", L"\u00e9"}});
         wide.writeTextElement(L"a:t", L"\U0001F600");
         wide.endElement();
         EXPECT_EQ(writer.depth + edge.depth + wide.depth, 2u);
         return out.str();
     }},
};

TEST(NodeWriting, EveryCaseWritesItsGoldenText) {
    std::string text;
    for (auto const& [name, write] : cases)
        text += std::string("## ") + name + "\n" + write();
    EXPECT_TRUE(testsupport::matchesGolden("gml/nodes.txt", text));
}

} // namespace
