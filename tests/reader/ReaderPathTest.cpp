#include "ReaderTestUtil.h"

#include <gtest/gtest.h>

using namespace readertest;

TEST(ReaderPath, BuildingHierarchyVersion2) {
    auto model = loadText(model2(R"(<core:cityObjectMember><bldg:Building gml:id="b1">
      <bldg:boundedBy><bldg:WallSurface gml:id="w1"><bldg:lod2MultiSurface>
        <gml:MultiSurface gml:id="ms1"><gml:surfaceMember>)" +
                                 square("p1") + R"(</gml:surfaceMember></gml:MultiSurface>
      </bldg:lod2MultiSurface></bldg:WallSurface></bldg:boundedBy>
      <bldg:lod2Solid><gml:Solid gml:id="s1"><gml:exterior><gml:CompositeSurface gml:id="cs1">
        <gml:surfaceMember xlink:href="#p1"/></gml:CompositeSurface></gml:exterior></gml:Solid>
      </bldg:lod2Solid>
      <bldg:consistsOfBuildingPart><bldg:BuildingPart gml:id="bp1"/></bldg:consistsOfBuildingPart>
    </bldg:Building></core:cityObjectMember>)"));
    auto roots = model->getRootCityObjects();
    ASSERT_EQ(roots.size(), 1u);
    auto const& building = *roots[0];
    EXPECT_EQ(pathOf(building), "bldg:building[b1]\\");
    ASSERT_EQ(building.getChildCityObjectsCount(), 2u);
    auto const& wall = building.getChildCityObject(0);
    EXPECT_EQ(pathOf(wall), "bldg:boundedby\\bldg:wallsurface[w1]\\");
    EXPECT_EQ(pathOf(building.getChildCityObject(1)),
              "bldg:consistsofbuildingpart\\bldg:buildingpart[bp1]\\");
    ASSERT_EQ(wall.getGeometriesCount(), 1u);
    EXPECT_EQ(pathOf(wall.getGeometry(0)), "bldg:lod2multisurface\\gml:multisurface[ms1]\\");

    ASSERT_EQ(building.getGeometriesCount(), 1u);
    auto const& solid = building.getGeometry(0);
    EXPECT_EQ(pathOf(solid), "bldg:lod2solid\\gml:solid[s1]\\");
    ASSERT_EQ(solid.getGeometriesCount(), 1u);
    // The gml:exterior between the two geometries stays out of the nested one's path.
    EXPECT_EQ(pathOf(solid.getGeometry(0)), "gml:compositesurface[cs1]\\");
    EXPECT_EQ(solid.getGeometry(0).getPolygonsCount(), 1u);

    // Any tracker of the model answers for any id; unknown ids give nothing.
    EXPECT_EQ(building.getNodeStackPath("w1", nullptr), "bldg:boundedby\\bldg:wallsurface[w1]\\");
    EXPECT_EQ(solid.getNodeStackPath("ms1", nullptr),
              "bldg:lod2multisurface\\gml:multisurface[ms1]\\");
    EXPECT_EQ(building.getNodeStackPath("no-such-id", nullptr), "");
    EXPECT_EQ(building.getNodeStackPath("p1", nullptr), "");
}

TEST(ReaderPath, Version3WallUnderBoundary) {
    auto model = loadText(R"(<core:CityModel xmlns:core="http://www.opengis.net/citygml/3.0"
      xmlns:con="http://www.opengis.net/citygml/construction/3.0"
      xmlns:bldg="http://www.opengis.net/citygml/building/3.0"
      xmlns:gml="http://www.opengis.net/gml/3.2"><core:cityObjectMember>
      <bldg:Building gml:id="b"><core:boundary><con:WallSurface gml:id="w">
      <core:lod2MultiSurface><gml:MultiSurface gml:id="m"><gml:surfaceMember>)" +
                          square() + R"(</gml:surfaceMember></gml:MultiSurface>
      </core:lod2MultiSurface></con:WallSurface></core:boundary></bldg:Building>
      </core:cityObjectMember></core:CityModel>)");
    auto const& building = *model->getRootCityObjects().at(0);
    auto const& wall = building.getChildCityObject(0);
    EXPECT_EQ(pathOf(wall), "core:boundary\\con:wallsurface[w]\\");
    EXPECT_EQ(pathOf(wall.getGeometry(0)), "core:lod2multisurface\\gml:multisurface[m]\\");
    EXPECT_EQ(wall.getGeometry(0).getLOD(), 2u);
    EXPECT_EQ(model->getCityGMLVersion(), 3);
}

TEST(ReaderPath, ReliefTinAndLodFromDemLod) {
    auto model = loadText(model2(R"(<core:cityObjectMember><dem:ReliefFeature gml:id="rf">
      <dem:lod>1</dem:lod><dem:reliefComponent><dem:TINRelief gml:id="tin"><dem:lod>3</dem:lod>
      <dem:tin><gml:TriangulatedSurface gml:id="ts"><gml:trianglePatches><gml:Triangle>
      <gml:exterior><gml:LinearRing><gml:posList>0 0 0 1 0 0 0 1 0</gml:posList></gml:LinearRing>
      </gml:exterior></gml:Triangle></gml:trianglePatches></gml:TriangulatedSurface></dem:tin>
      </dem:TINRelief></dem:reliefComponent></dem:ReliefFeature></core:cityObjectMember>)"));
    auto const& relief = *model->getRootCityObjects().at(0);
    EXPECT_EQ(pathOf(relief), "dem:relieffeature[rf]\\");
    auto const& tin = relief.getChildCityObject(0);
    EXPECT_EQ(pathOf(tin), "dem:reliefcomponent\\dem:tinrelief[tin]\\");
    EXPECT_EQ(tin.getType(), citygml::CityObject::CityObjectsType::COT_ReliefComponent);
    auto const& surface = tin.getGeometry(0);
    EXPECT_EQ(pathOf(surface), "dem:tin\\gml:triangulatedsurface[ts]\\");
    EXPECT_EQ(surface.getLOD(), 3u);
    ASSERT_EQ(surface.getPolygonsCount(), 1u);
    // The triangle's ring is closed by the reader.
    EXPECT_EQ(surface.getPolygon(0)->exteriorRing()->getVertices().size(), 4u);
}

TEST(ReaderPath, DefaultNamespacesUnknownPrefixesAndMissingIds) {
    auto model = loadText(R"(<CityModel xmlns="http://www.opengis.net/citygml/1.0"
      xmlns:gml="http://www.opengis.net/gml"><cityObjectMember>
      <Building xmlns="http://www.opengis.net/citygml/building/1.0"><lod1Solid>
      <gml:Solid><gml:exterior><gml:CompositeSurface><gml:surfaceMember>)" +
                          square() + R"(</gml:surfaceMember></gml:CompositeSurface></gml:exterior>
      </gml:Solid></lod1Solid><ADE:Wrapper xmlns:ADE="urn:example:ade"><ADE:Extra>
      <gml:MultiSurface gml:id="ade1"/></ADE:Extra></ADE:Wrapper></Building>
      </cityObjectMember></CityModel>)");
    auto const& building = *model->getRootCityObjects().at(0);
    EXPECT_EQ(pathOf(building), "bldg:building\\");
    EXPECT_TRUE(building.hasGeneratedId());
    // A generated id never leaks into a path, and it cannot be a gml:id.
    EXPECT_NE(building.getId().find(' '), std::string::npos);
    ASSERT_EQ(building.getGeometriesCount(), 2u);
    EXPECT_EQ(pathOf(building.getGeometry(0)), "bldg:lod1solid\\gml:solid\\");
    EXPECT_EQ(building.getGeometry(0).getLOD(), 1u);
    EXPECT_EQ(pathOf(building.getGeometry(0).getGeometry(0)), "gml:compositesurface\\");
    EXPECT_EQ(pathOf(building.getGeometry(1)), "ade:wrapper\\ade:extra\\gml:multisurface[ade1]\\");
    EXPECT_EQ(model->getCityGMLVersion(), 1);
}

TEST(ReaderPath, PolygonHeldDirectlyByAFeatureProperty) {
    auto model = loadText(model2(
        R"(<core:cityObjectMember><gen:GenericCityObject gml:id="g">
      <gen:lod1Geometry>)" +
        square("gp") + R"(</gen:lod1Geometry></gen:GenericCityObject></core:cityObjectMember>)"));
    auto const& object = *model->getRootCityObjects().at(0);
    ASSERT_EQ(object.getGeometriesCount(), 1u);
    auto const& g = object.getGeometry(0);
    EXPECT_EQ(g.getType(), citygml::Geometry::GeometryType::GT_Polygon);
    EXPECT_EQ(pathOf(g), "gen:lod1geometry\\gml:polygon[gp]\\");
    EXPECT_EQ(g.getPolygonsCount(), 1u);
    EXPECT_EQ(g.getLOD(), 1u);
}
