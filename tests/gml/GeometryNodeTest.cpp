#include "GmlTestSupport.h"

#include "gml/GeometryNode.h"
#include "gml/Identifiers.h"
#include "gml/PolygonNode.h"
#include "gml/XmlWriter.h"

#include <gtest/gtest.h>

#include <set>
#include <sstream>
#include <thread>

#include <sys/wait.h>
#include <unistd.h>

#define EXPECT_HEAD(text, expected) EXPECT_EQ(head(text, expected), expected)

namespace {

using gml::GeometryNode;
using gml::PolygonNode;
using gmltest::referenceId;

std::string toNarrow(const std::wstring& text) {
    return std::string(text.begin(), text.end());
}

// The first bytes of `text`, as many as `expected` has.
std::string head(const std::string& text, const std::string& expected) {
    return text.substr(0, expected.size());
}

std::string writeAt(gml::CityElementNode& node, std::uint32_t depth, int version = 3,
                    int precision = 3) {
    std::ostringstream out;
    gml::XmlWriter writer(out, version, precision);
    writer.depth = depth;
    node.write(writer);
    EXPECT_EQ(writer.depth, depth);
    EXPECT_TRUE(writer.openTags.empty());
    return out.str();
}

// The ring lines of the reference quad, `blanks` deep.
std::string quadRing(const PolygonNode& polygon, std::size_t blanks) {
    const std::string in(blanks, ' ');
    const std::string ring(blanks + 1, ' ');
    return in + "<gml:exterior>\n" + ring + "<gml:LinearRing gml:id=\"" + toNarrow(polygon.ringId) +
           "\">\n" + ring + "<gml:posList srsDimension=\"3\">\n" + ring +
           "0.000 -0.000 0.000 10.000 -0.000 0.000 10.000 10.000 0.000 0.000 10.000 0.000 "
           "0.000 -0.000 0.000 </gml:posList>\n" +
           ring + "</gml:LinearRing>\n" + in + "</gml:exterior>\n";
}

TEST(PolygonNodeTest, IdentifiersAreFreshUuidsStartingWithALetter) {
    std::set<std::wstring> seen;
    for (int i = 0; i < 2000; ++i) {
        const std::wstring id = gml::newUuidString();
        ASSERT_TRUE(std::regex_match(id, gmltest::uuidPattern)) << toNarrow(id);
        seen.insert(id);
    }
    EXPECT_EQ(seen.size(), 2000u);

    // Several threads at once still get distinct, well-formed identifiers.
    std::vector<std::vector<std::wstring>> perThread(4);
    std::vector<std::thread> threads;
    for (auto& ids : perThread)
        threads.emplace_back([&ids] {
            for (int i = 0; i < 500; ++i)
                ids.push_back(gml::newUuidString());
        });
    for (auto& thread : threads)
        thread.join();
    std::set<std::wstring> all;
    for (const auto& ids : perThread)
        for (const auto& id : ids) {
            EXPECT_TRUE(std::regex_match(id, gmltest::uuidPattern));
            all.insert(id);
        }
    EXPECT_EQ(all.size(), 2000u);
}

TEST(PolygonNodeTest, ForkedProcessesDrawDifferentIdentifiers) {
    // The parent has a block of random bytes in hand; a child must not reuse it.
    gml::newUuidString();
    int channel[2];
    ASSERT_EQ(pipe(channel), 0);
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        const std::wstring id = gml::newUuidString();
        const std::string text(id.begin(), id.end());
        const ssize_t written = ::write(channel[1], text.data(), text.size());
        _exit(written == static_cast<ssize_t>(text.size()) ? 0 : 1);
    }
    close(channel[1]);
    const std::wstring mine = gml::newUuidString();
    char buffer[64] = {};
    const ssize_t length = read(channel[0], buffer, sizeof buffer);
    close(channel[0]);
    int status = 0;
    waitpid(child, &status, 0);
    ASSERT_EQ(length, 36);
    const std::string theirs(buffer, 36);
    EXPECT_NE(theirs, toNarrow(mine));
    EXPECT_TRUE(std::regex_match(std::wstring(theirs.begin(), theirs.end()), gmltest::uuidPattern));
}

TEST(PolygonNodeTest, WritesTheReferenceQuad) {
    PolygonNode polygon(gmltest::makeReferenceQuad(), referenceId, 0, L"gml:MultiSurface");
    EXPECT_EQ(polygon.polygonId(), referenceId + L"_poly0");
    const std::wstring prefix = referenceId + L"_poly0.";
    ASSERT_EQ(polygon.ringId.compare(0, prefix.size(), prefix), 0);
    EXPECT_TRUE(std::regex_match(polygon.ringId.substr(prefix.size()), gmltest::uuidPattern));

    const std::string expected = "      <gml:Polygon gml:id=\"" + toNarrow(referenceId) +
                                 "_poly0\">\n" + quadRing(polygon, 7) + "      </gml:Polygon>\n";
    EXPECT_EQ(writeAt(polygon, 5, 3), expected);
    // No step looks at the version.
    EXPECT_EQ(writeAt(polygon, 5, 2), expected);
}

TEST(PolygonNodeTest, SurfaceTagSelectsTheForm) {
    auto mesh = gmltest::makeReferenceQuad();
    PolygonNode patch(mesh, referenceId, 0, L"gml:Surface");
    EXPECT_EQ(patch.polygonId(), L"");
    EXPECT_TRUE(std::regex_match(patch.ringId, gmltest::uuidPattern));
    EXPECT_EQ(writeAt(patch, 0),
              " <gml:PolygonPatch>\n" + quadRing(patch, 2) + " </gml:PolygonPatch>\n");

    PolygonNode triangle(mesh, referenceId, 0, L"gml:TriangulatedSurface");
    EXPECT_EQ(triangle.polygonId(), L"");
    EXPECT_EQ(writeAt(triangle, 0),
              " <gml:Triangle>\n" + quadRing(triangle, 2) + " </gml:Triangle>\n");

    PolygonNode orientable(mesh, referenceId, 0, L"gml:OrientableSurface");
    EXPECT_EQ(writeAt(orientable, 0), " <gml:OrientableSurface>\n"
                                      "  <gml:baseSurface>\n"
                                      "   <gml:Polygon gml:id=\"" +
                                          toNarrow(referenceId) + "_poly0\">\n" +
                                          quadRing(orientable, 4) +
                                          "   </gml:Polygon>\n"
                                          "  </gml:baseSurface>\n"
                                          " </gml:OrientableSurface>\n");

    PolygonNode lower(mesh, referenceId, 0, L"gml:surface");
    EXPECT_EQ(lower.polygonId(), referenceId + L"_poly0");
    EXPECT_EQ(writeAt(lower, 0).substr(0, 14), " <gml:Polygon ");
    EXPECT_FALSE(lower.isOrientableSurface());
    EXPECT_FALSE(orientable.isOrientableSurface());
}

TEST(PolygonNodeTest, CoordinatesFollowTheFaceAndCloseTheRing) {
    // A triangle writes twelve numbers; z = -10 becomes 10 and the last vertex is closed even
    // when it repeats the first.
    auto mesh = gmltest::makeMesh({{1, 2, 0}, {4, 5, -10}, {7, 8, 9}, {1, 2, 0}},
                                  {{0, 1, 2}, {0, 1, 2, 3}});
    PolygonNode triangle(mesh, L"a", 0, L"gml:CompositeSurface");
    std::string text = writeAt(triangle, 0, 3, 0);
    EXPECT_NE(text.find("  1 -0 2 4 10 5 7 -9 8 1 -0 2 </gml:posList>\n"), std::string::npos);
    PolygonNode closed(mesh, L"a", 1, L"gml:CompositeSurface");
    text = writeAt(closed, 0, 3, 0);
    EXPECT_NE(text.find("  1 -0 2 4 10 5 7 -9 8 1 -0 2 1 -0 2 </gml:posList>\n"),
              std::string::npos);
    EXPECT_NE(text.find("gml:id=\"a_poly1\""), std::string::npos);
    // Two nodes with the same face never share an id.
    PolygonNode again(mesh, gml::newUuidString(), 1, L"gml:MultiSurface");
    PolygonNode other(mesh, gml::newUuidString(), 1, L"gml:MultiSurface");
    EXPECT_NE(again.polygonId(), other.polygonId());
    EXPECT_NE(again.ringId, other.ringId);
}

TEST(GeometryNodeTest, MultiSurfaceAndSurfaceReferenceOutputs) {
    auto mesh = gmltest::makeMesh({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}}, {{0, 1, 2}});
    GeometryNode multi(L"g1", true, L"gml:MultiSurface", mesh);
    auto polygon = std::make_shared<PolygonNode>(mesh, referenceId, 0, L"gml:MultiSurface");
    multi.addChild(polygon);
    const std::string text = writeAt(multi, 3);
    const std::string top = "    <gml:MultiSurface gml:id=\"g1\">\n"
                            "     <gml:surfaceMember>\n"
                            "      <gml:Polygon gml:id=\"" +
                            toNarrow(referenceId) + "_poly0\">\n";
    const std::string tail = "      </gml:Polygon>\n"
                             "     </gml:surfaceMember>\n"
                             "    </gml:MultiSurface>\n";
    ASSERT_GT(text.size(), top.size() + tail.size());
    EXPECT_HEAD(text, top);
    EXPECT_EQ(text.substr(text.size() - tail.size()), tail);

    GeometryNode surface(L"g2", true, L"gml:Surface", mesh);
    auto patch = std::make_shared<PolygonNode>(mesh, referenceId, 0, L"gml:Surface");
    surface.addChild(patch);
    const std::string surfaceText = writeAt(surface, 3);
    EXPECT_HEAD(surfaceText, "    <gml:Surface gml:id=\"g2\">\n"
                             "     <gml:patches>\n"
                             "      <gml:PolygonPatch>\n");
    const std::string surfaceTail = "      </gml:PolygonPatch>\n"
                                    "     </gml:patches>\n"
                                    "    </gml:Surface>\n";
    EXPECT_EQ(surfaceText.substr(surfaceText.size() - surfaceTail.size()), surfaceTail);
}

TEST(GeometryNodeTest, PropertyElementsPerGeometry) {
    auto mesh = gmltest::makeMesh({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}}, {{0, 1, 2}});
    GeometryNode emptySolid(L"s", false, L"gml:Solid", mesh);
    EXPECT_EQ(writeAt(emptySolid, 0),
              " <gml:Solid>\n  <gml:exterior>\n  </gml:exterior>\n </gml:Solid>\n");
    GeometryNode emptyMulti(L"m", true, L"gml:MultiSurface", mesh);
    EXPECT_EQ(writeAt(emptyMulti, 0), " <gml:MultiSurface gml:id=\"m\">\n </gml:MultiSurface>\n");
    GeometryNode tin2(L"t", false, L"gml:TriangulatedSurface", mesh);
    EXPECT_EQ(writeAt(tin2, 0, 2), " <gml:TriangulatedSurface>\n  <gml:trianglePatches>\n  "
                                   "</gml:trianglePatches>\n </gml:TriangulatedSurface>\n");
    EXPECT_EQ(writeAt(tin2, 0, 3), " <gml:TriangulatedSurface>\n  <gml:patches>\n  "
                                   "</gml:patches>\n </gml:TriangulatedSurface>\n");

    // Solid > CompositeSurface: no member wrapper in the solid, one per polygon inside.
    GeometryNode solid(L"s", false, L"gml:Solid", mesh);
    auto shell = std::make_shared<GeometryNode>(L"c", false, L"gml:CompositeSurface", mesh);
    shell->addChild(std::make_shared<PolygonNode>(mesh, L"p", 0, L"gml:CompositeSurface"));
    solid.addChild(shell);
    std::string text = writeAt(solid, 0);
    EXPECT_HEAD(text, " <gml:Solid>\n"
                      "  <gml:exterior>\n"
                      "   <gml:CompositeSurface>\n"
                      "    <gml:surfaceMember>\n"
                      "     <gml:Polygon gml:id=\"p_poly0\">\n");

    // Polygons directly in a solid stand in its exterior without a member element.
    GeometryNode bare(L"s", false, L"gml:Solid", mesh);
    bare.addChild(std::make_shared<PolygonNode>(mesh, L"p", 0, L"gml:Solid"));
    text = writeAt(bare, 0);
    EXPECT_HEAD(text, " <gml:Solid>\n"
                      "  <gml:exterior>\n"
                      "   <gml:Polygon gml:id=\"p_poly0\">\n");
    EXPECT_EQ(text.find("surfaceMember"), std::string::npos);
}

TEST(GeometryNodeTest, OrientableSurfacesWriteThroughTheirPolygons) {
    auto mesh = gmltest::makeMesh({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}}, {{0, 1, 2}});
    GeometryNode multi(L"m", false, L"gml:MultiSurface", mesh);
    auto orientable =
        std::make_shared<GeometryNode>(L"hiddenId", true, L"gml:OrientableSurface", mesh);
    EXPECT_TRUE(orientable->isOrientableSurface());
    EXPECT_FALSE(orientable->writesOwnTag());
    orientable->addChild(std::make_shared<PolygonNode>(mesh, L"p", 0, L"gml:OrientableSurface"));
    orientable->addChild(std::make_shared<PolygonNode>(mesh, L"q", 0, L"gml:OrientableSurface"));
    multi.addChild(orientable);
    const std::string text = writeAt(multi, 0);
    EXPECT_EQ(text.find("hiddenId"), std::string::npos);
    // One member element per polygon, from the orientable node, none from the multi surface.
    std::size_t members = 0;
    for (std::size_t at = text.find("<gml:surfaceMember>"); at != std::string::npos;
         at = text.find("<gml:surfaceMember>", at + 1))
        ++members;
    EXPECT_EQ(members, 2u);
    EXPECT_HEAD(text, " <gml:MultiSurface>\n"
                      "  <gml:surfaceMember>\n"
                      "   <gml:OrientableSurface>\n"
                      "    <gml:baseSurface>\n"
                      "     <gml:Polygon gml:id=\"p_poly0\">\n"
                      "      <gml:exterior>\n");
}

TEST(GeometryNodeTest, BrokenNodesFailWithAnError) {
    auto mesh = gmltest::makeMesh({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}}, {{0, 1, 2}});
    PolygonNode outside(mesh, L"p", 1, L"gml:MultiSurface");
    std::ostringstream out;
    gml::XmlWriter writer(out, 3, 3);
    EXPECT_THROW(outside.write(writer), std::out_of_range);
    PolygonNode noMesh(nullptr, L"p", 0, L"gml:MultiSurface");
    EXPECT_THROW(noMesh.write(writer), std::out_of_range);
    // A geometry without a tag closes one element more than it opened.
    GeometryNode untagged(L"u", false, L"", mesh);
    EXPECT_THROW(untagged.write(writer), std::logic_error);
}

TEST(GeometryNodeTest, ChildrenKeepCreationOrderInEveryVersion) {
    auto mesh = gmltest::makeMesh({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}}, {{0, 1, 2}});
    GeometryNode multi(L"m", false, L"gml:MultiGeometry", mesh);
    multi.addChild(std::make_shared<GeometryNode>(L"b", true, L"gml:boundedBy", mesh));
    multi.addChild(std::make_shared<GeometryNode>(L"a", true, L"x:lod1Solid", mesh));
    const std::string text = writeAt(multi, 0, 2);
    EXPECT_LT(text.find("gml:boundedBy"), text.find("x:lod1Solid"));
}

} // namespace
