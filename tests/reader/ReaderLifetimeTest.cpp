// Everything a model holds lives in one storage that goes with the last pointer into it: shared
// pointers handed out for polygons, rings and texture targets must keep it alive on their own,
// and storage given back by one model must serve the next one unchanged.
#include "ReaderTestUtil.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

using namespace readertest;

namespace {

std::string texturedWall(int polygons) {
    std::string members = R"(<core:cityObjectMember><bldg:Building gml:id="b">
      <bldg:lod2MultiSurface><gml:MultiSurface gml:id="ms">)";
    for (int i = 0; i < polygons; ++i)
        members += "<gml:surfaceMember>" +
                   square("p" + std::to_string(i), "r" + std::to_string(i)) +
                   "</gml:surfaceMember>";
    members += R"(</gml:MultiSurface></bldg:lod2MultiSurface></bldg:Building>
      </core:cityObjectMember><core:appearanceMember><app:Appearance><app:theme>t</app:theme>
      <app:surfaceDataMember><app:ParameterizedTexture gml:id="tex">
      <app:imageURI>wall.png</app:imageURI><app:target uri="#p0"><app:TexCoordList>
      <app:textureCoordinates ring="#r0">0 0 1 0 1 1 0 1 0 0</app:textureCoordinates>
      </app:TexCoordList></app:target></app:ParameterizedTexture></app:surfaceDataMember>
      </app:Appearance></core:appearanceMember>)";
    return model2(members);
}

// Everything of a model in one string, to compare models read at different times.
std::string describe(citygml::CityModel const& model) {
    std::string out;
    auto const& g = model.getRootCityObject(0).getGeometry(0);
    out += std::string(g.getId()) + " " + pathOf(g) + "\n";
    for (unsigned i = 0; i < g.getPolygonsCount(); ++i) {
        auto p = g.getPolygon(i);
        out += std::string(p->getId()) + " " + std::string(p->exteriorRing()->getId());
        for (auto const& v : p->exteriorRing()->getVertices())
            out += " " + std::to_string(v.x) + "," + std::to_string(v.y);
        out += "\n";
    }
    return out;
}

} // namespace

TEST(ReaderLifetime, SharedPointersKeepTheModelsStorageAlive) {
    auto model = loadText(texturedWall(3));
    auto polygon = model->getRootCityObject(0).getGeometry(0).getPolygon(2);
    auto ring = model->getRootCityObject(0).getGeometry(0).getPolygon(0)->exteriorRing();
    auto target = model->getRootCityObject(0)
                      .getGeometry(0)
                      .getPolygon(0)
                      ->getTextureTargetDefinitionForTheme("t", true);
    ASSERT_TRUE(polygon && ring && target);
    model.reset();

    // The sanitizer build turns any read of freed storage here into a failure.
    EXPECT_EQ(polygon->getId(), "p2");
    EXPECT_EQ(polygon->exteriorRing()->getId(), "r2");
    EXPECT_EQ(ring->getVertices().size(), 5u);
    EXPECT_EQ(ring->getVertices()[2], citygml::TVec3d(1, 1, 0));
    EXPECT_EQ(target->getTargetID(), "p0");
    EXPECT_EQ(target->getAppearance()->getUrl(), "wall.png");
    auto coords = target->getTextureCoordinatesForID("#r0");
    ASSERT_TRUE(coords);
    EXPECT_EQ(coords->getCoords().at(1), citygml::TVec2f(1, 0));
}

TEST(ReaderLifetime, ReusedStorageGivesTheSameModels) {
    // Large enough that storage blocks of several sizes are made, given back and taken again.
    std::string const text = texturedWall(20000);
    auto first = loadText(text);
    std::string const expected = describe(*first);
    EXPECT_EQ(first->getRootCityObject(0).getGeometry(0).getPolygonsCount(), 20000u);
    first.reset();

    std::vector<std::thread> threads;
    std::vector<std::string> seen(4);
    for (std::size_t t = 0; t < seen.size(); ++t)
        threads.emplace_back([&, t] {
            for (int i = 0; i < 3; ++i) {
                auto model = loadText(text);
                seen[t] = describe(*model);
                if (seen[t] != expected)
                    return;
            }
        });
    for (auto& t : threads)
        t.join();
    for (auto const& s : seen)
        EXPECT_TRUE(s == expected);
}
