#include "ReaderTestUtil.h"

#include <gtest/gtest.h>

using namespace readertest;
using citygml::AttributeType;
using citygml::TVec3d;

namespace {

std::string ring(std::string const& positions, std::string const& kind = "exterior") {
    return "<gml:" + kind + "><gml:LinearRing>" + positions + "</gml:LinearRing></gml:" + kind +
           ">";
}

std::string building(std::string const& surfaceMembers, std::string const& extra = "") {
    return model2(
        "<core:cityObjectMember><bldg:Building gml:id=\"b\">" + extra +
        "<bldg:lod2MultiSurface><gml:MultiSurface gml:id=\"ms\">" + surfaceMembers +
        "</gml:MultiSurface></bldg:lod2MultiSurface></bldg:Building></core:cityObjectMember>");
}

std::string member(std::string const& polygonBody, std::string const& id = "") {
    return "<gml:surfaceMember><gml:Polygon" + (id.empty() ? "" : " gml:id=\"" + id + "\"") + ">" +
           polygonBody + "</gml:Polygon></gml:surfaceMember>";
}

} // namespace

// Bad rings are covered by the drop messages of ReaderHostile.
TEST(ReaderModel, RingsAreClosedInEveryNotation) {
    auto model = loadText(building(
        member(ring("<gml:posList>0 0 0 1 0 0 1 1 0</gml:posList>")) +
        member(ring("<gml:posList srsDimension=\"2\">0 0 1 0 1 1</gml:posList>") +
               ring("<gml:posList srsDimension=\"2\">0 0 1 0 1 1 0 0</gml:posList>", "interior")) +
        member(ring("<gml:coordinates>0,0,0 1,0,0 1,1,0 0,0,0</gml:coordinates>")) +
        member(ring("<gml:pos>0 0 0</gml:pos><gml:pos>1 0 0</gml:pos><gml:pos>1 1 0</gml:pos>"))));
    auto const& g = model->getRootCityObjects().at(0)->getGeometry(0);
    ASSERT_EQ(g.getPolygonsCount(), 4u);
    std::vector<TVec3d> const closed{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 0, 0}};
    for (unsigned i = 0; i < 4; ++i)
        EXPECT_EQ(g.getPolygon(i)->exteriorRing()->getVertices(), closed) << i;
    ASSERT_EQ(g.getPolygon(1)->interiorRings().size(), 1u);
    EXPECT_FALSE(g.getPolygon(1)->interiorRings()[0]->isExterior());
    EXPECT_EQ(g.getPolygon(1)->interiorRings()[0]->getVertices(), closed);
}

TEST(ReaderModel, SharedPolygonsAndDocumentOrder) {
    auto model = loadText(
        model2(R"(<core:cityObjectMember><bldg:Building gml:id="b">
      <bldg:boundedBy><bldg:RoofSurface gml:id="r"><bldg:lod2MultiSurface><gml:MultiSurface>)" +
               member(ring("<gml:posList>0 0 1 1 0 1 1 1 1</gml:posList>"), "roof") +
               R"(</gml:MultiSurface></bldg:lod2MultiSurface></bldg:RoofSurface></bldg:boundedBy>
      <bldg:boundedBy><bldg:GroundSurface gml:id="g"/></bldg:boundedBy>
      <bldg:lod2Solid><gml:Solid><gml:exterior><gml:CompositeSurface gml:id="cs">
        <gml:surfaceMember xlink:href="#roof"/>)" +
               member(ring("<gml:posList>0 0 0 1 0 0 1 1 0</gml:posList>"), "own") +
               R"(<gml:surfaceMember xlink:href="#missing"/>
      </gml:CompositeSurface></gml:exterior></gml:Solid></bldg:lod2Solid>
      </bldg:Building></core:cityObjectMember>
      <core:cityObjectMember><bldg:Building gml:id="second"/></core:cityObjectMember>
      <core:appearanceMember><app:Appearance><app:surfaceDataMember><app:X3DMaterial gml:id="m">
      <app:target>#own</app:target></app:X3DMaterial></app:surfaceDataMember>
      <app:surfaceDataMember><app:X3DMaterial gml:id="whole"><app:target>#cs</app:target>
      </app:X3DMaterial></app:surfaceDataMember></app:Appearance>
      </core:appearanceMember>)"));
    auto roots = model->getRootCityObjects();
    ASSERT_EQ(roots.size(), 2u);
    EXPECT_EQ(roots[1]->getId(), "second");
    auto const& b = *roots[0];
    ASSERT_EQ(b.getChildCityObjectsCount(), 2u);
    EXPECT_EQ(b.getChildCityObject(0).getId(), "r");
    EXPECT_EQ(b.getChildCityObject(1).getId(), "g");
    EXPECT_EQ(b.getChildCityObject(1).getTypeAsString(), "bldg:groundsurface");
    auto const& composite = b.getGeometry(0).getGeometry(0);
    // The shared polygon keeps its place in document order; the unresolved one is left out.
    ASSERT_EQ(composite.getPolygonsCount(), 2u);
    EXPECT_EQ(composite.getPolygon(0)->getId(), "roof");
    EXPECT_EQ(composite.getPolygon(1)->getId(), "own");
    EXPECT_EQ(composite.getPolygon(0), b.getChildCityObject(0).getGeometry(0).getPolygon(0));
    // Appearance targets are found by id whatever shared slots stood around them.
    EXPECT_TRUE(composite.getPolygon(1)->getMaterialFor(""));
    EXPECT_EQ(composite.getPolygon(1)->getMaterialFor("")->getId(), "m");
    // A material aimed at the whole surface reaches the shared polygon too, and passes over
    // the reference that pointed nowhere.
    EXPECT_EQ(composite.getPolygon(0)->getMaterialFor("")->getId(), "whole");
}

TEST(ReaderModel, AttributesOfEveryVersion) {
    auto model = loadText(model2(R"(<core:cityObjectMember><bldg:Building gml:id="b">
      <gml:name>Town hall</gml:name>
      <gen:stringAttribute name="s"><gen:value>text</gen:value></gen:stringAttribute>
      <gen:intAttribute name="i"><gen:value> 42 </gen:value></gen:intAttribute>
      <gen:doubleAttribute name="d"><gen:value>2.5</gen:value></gen:doubleAttribute>
      <gen:dateAttribute name="when"><gen:value>2020-05-01</gen:value></gen:dateAttribute>
      <gen:uriAttribute name="u"><gen:value>http://example.org</gen:value></gen:uriAttribute>
      <gen:measureAttribute name="m"><gen:value uom="m">3.25</gen:value></gen:measureAttribute>
      <gen:genericAttributeSet name="set"><gen:intAttribute name="inner"><gen:value>7</gen:value>
      </gen:intAttribute></gen:genericAttributeSet>
      <bldg:function>1000</bldg:function><bldg:measuredHeight uom="m">12.5</bldg:measuredHeight>
      <bldg:boundedBy><bldg:WallSurface gml:id="w"><gen:stringAttribute name="own">
      <gen:value>wall</gen:value></gen:stringAttribute></bldg:WallSurface></bldg:boundedBy>
      </bldg:Building></core:cityObjectMember>)"));
    auto const& b = *model->getRootCityObjects().at(0);
    auto const& a = b.getAttributes();
    auto type = [&](std::string const& k) { return a.at(k).getType(); };
    EXPECT_EQ(a.at("name").asString(), "Town hall");
    EXPECT_EQ(type("s"), AttributeType::String);
    EXPECT_EQ(type("i"), AttributeType::Integer);
    EXPECT_EQ(a.at("i").asInteger(), 42);
    EXPECT_EQ(type("d"), AttributeType::Double);
    EXPECT_DOUBLE_EQ(a.at("d").asDouble(), 2.5);
    EXPECT_EQ(type("when"), AttributeType::Date);
    EXPECT_EQ(type("u"), AttributeType::Uri);
    EXPECT_EQ(type("m"), AttributeType::Double);
    EXPECT_EQ(a.at("inner").asInteger(), 7);
    EXPECT_EQ(a.count("set"), 0u);
    EXPECT_EQ(a.at("function").asString(), "1000");
    EXPECT_EQ(type("measuredHeight"), AttributeType::String);
    EXPECT_DOUBLE_EQ(a.at("measuredHeight").asDouble(), 12.5);
    EXPECT_EQ(a.count("own"), 0u);
    EXPECT_EQ(b.getChildCityObject(0).getAttributes().at("own").asString(), "wall");
    EXPECT_EQ(static_cast<int>(AttributeType::Double), 1);
    EXPECT_EQ(static_cast<int>(AttributeType::Integer), 2);
    // Numbers that are not numbers give the caller's default.
    EXPECT_EQ(a.at("s").asInteger(-1), -1);
    EXPECT_DOUBLE_EQ(a.at("when").asDouble(9.0), 9.0);

    auto v3 = loadText(R"(<core:CityModel xmlns:core="http://www.opengis.net/citygml/3.0"
      xmlns:gen="http://www.opengis.net/citygml/generics/3.0"
      xmlns:gml="http://www.opengis.net/gml/3.2"><core:cityObjectMember>
      <gen:GenericOccupiedSpace gml:id="o"><core:genericAttribute><gen:IntAttribute>
      <gen:name>floors</gen:name><gen:value>3</gen:value></gen:IntAttribute></core:genericAttribute>
      <core:genericAttribute><gen:GenericAttributeSet><gen:name>group</gen:name><gen:value>
      <gen:DoubleAttribute><gen:name>area</gen:name><gen:value>8.5</gen:value></gen:DoubleAttribute>
      </gen:value></gen:GenericAttributeSet></core:genericAttribute>
      </gen:GenericOccupiedSpace></core:cityObjectMember></core:CityModel>)");
    auto const& o = v3->getRootCityObjects().at(0)->getAttributes();
    EXPECT_EQ(o.at("floors").getType(), AttributeType::Integer);
    EXPECT_EQ(o.at("floors").asInteger(), 3);
    EXPECT_EQ(o.at("area").getType(), AttributeType::Double);
    EXPECT_EQ(o.count("group"), 0u);
}

TEST(ReaderModel, EnvelopesAndSpatialReference) {
    auto model = loadText(model2(R"(<gml:boundedBy><gml:Envelope srsName="EPSG:25832">
      <gml:lowerCorner>1 2 3</gml:lowerCorner><gml:upperCorner>4 5 6</gml:upperCorner>
      </gml:Envelope></gml:boundedBy>
      <core:cityObjectMember><bldg:Building gml:id="a"><gml:boundedBy><gml:Envelope>
      <gml:pos>0 0 0</gml:pos><gml:pos>1 1 1</gml:pos></gml:Envelope></gml:boundedBy>
      <bldg:lod1MultiSurface><gml:MultiSurface srsName="EPSG:4326"/></bldg:lod1MultiSurface>
      </bldg:Building></core:cityObjectMember>
      <core:cityObjectMember><bldg:Building gml:id="c"><gml:boundedBy><gml:Envelope srsName="X">
      <gml:lowerCorner>5 5 5</gml:lowerCorner><gml:upperCorner>1 1 1</gml:upperCorner>
      </gml:Envelope></gml:boundedBy></bldg:Building></core:cityObjectMember>)"));
    auto const& e = model->getEnvelope();
    EXPECT_TRUE(e.validBounds());
    EXPECT_EQ(e.srsName(), "EPSG:25832");
    EXPECT_EQ(e.getLowerBound(), TVec3d(1, 2, 3));
    EXPECT_EQ(e.getUpperBound(), TVec3d(4, 5, 6));
    auto roots = model->getRootCityObjects();
    EXPECT_TRUE(roots[0]->getEnvelope().validBounds());
    EXPECT_EQ(roots[0]->getEnvelope().getUpperBound(), TVec3d(1, 1, 1));
    // No srsName on the envelope: the first one on the feature's geometry is taken.
    EXPECT_EQ(roots[0]->getEnvelope().srsName(), "EPSG:4326");
    EXPECT_EQ(roots[0]->getGeometry(0).getSRSName(), "EPSG:4326");
    EXPECT_FALSE(roots[1]->getEnvelope().validBounds());
    EXPECT_EQ(roots[1]->getEnvelope().srsName(), "X");
}

TEST(ReaderModel, ImplicitGeometriesCurvesAndLodFilter) {
    std::string text = model2(R"(<core:cityObjectMember><bldg:Building gml:id="b">
      <bldg:lod2MultiCurve><gml:MultiCurve gml:id="mc"><gml:curveMember><gml:LineString>
      <gml:posList>0 0 0 1 1 1</gml:posList></gml:LineString></gml:curveMember></gml:MultiCurve>
      </bldg:lod2MultiCurve>
      <bldg:outerBuildingInstallation><bldg:BuildingInstallation gml:id="bi">
      <bldg:lod2ImplicitRepresentation><core:ImplicitGeometry><core:relativeGMLGeometry>
      <gml:MultiSurface gml:id="proto"><gml:surfaceMember>)" +
                              square("ip") + R"(</gml:surfaceMember></gml:MultiSurface>
      </core:relativeGMLGeometry></core:ImplicitGeometry></bldg:lod2ImplicitRepresentation>
      </bldg:BuildingInstallation></bldg:outerBuildingInstallation>
      <bldg:lod3MultiSurface><gml:MultiSurface gml:id="l3"><gml:surfaceMember>)" +
                              square() + R"(</gml:surfaceMember></gml:MultiSurface>
      </bldg:lod3MultiSurface></bldg:Building></core:cityObjectMember>)");
    auto model = loadText(text);
    auto const& b = *model->getRootCityObjects().at(0);
    ASSERT_EQ(b.getGeometriesCount(), 2u);
    EXPECT_EQ(b.getGeometry(0).getType(), citygml::Geometry::GeometryType::GT_MultiCurve);
    EXPECT_EQ(b.getGeometry(0).getPolygonsCount(), 0u);
    EXPECT_EQ(b.getGeometry(1).getLOD(), 3u);
    EXPECT_EQ(b.getChildCityObject(0).getGeometriesCount(), 0u);

    std::istringstream in(text);
    citygml::ParserParams params;
    params.maxLOD = 2;
    auto filtered = citygml::load(in, params);
    EXPECT_EQ(filtered->getRootCityObjects().at(0)->getGeometriesCount(), 1u);
}

namespace {

// Fans every polygon from its first corner; enough to see that the reader hands over the rings.
class FanTesselator : public citygml::TesselatorBase {
public:
    std::vector<unsigned int> triangulate(std::vector<TVec3d> const&,
                                          std::vector<unsigned int> const& ringSizes) override {
        ++calls;
        std::vector<unsigned int> out;
        for (unsigned int i = 1; i + 1 < ringSizes.at(0); ++i)
            out.insert(out.end(), {0, i, i + 1});
        return out;
    }
    int calls = 0;
};

} // namespace

TEST(ReaderModel, TesselatorIsAskedOnlyWhenTesselating) {
    std::string text = building(member(ring("<gml:posList>0 0 0 1 0 0 1 1 0 0 1 0</gml:posList>")));
    auto fan = std::make_shared<FanTesselator>();
    {
        std::istringstream in(text);
        citygml::ParserParams params;
        auto model = citygml::load(in, params, fan);
        auto p = model->getRootCityObjects().at(0)->getGeometry(0).getPolygon(0);
        EXPECT_EQ(p->getIndices(), (std::vector<unsigned int>{0, 1, 2, 0, 2, 3}));
        // Triangles are extra: the ring stays as written, closed.
        EXPECT_EQ(p->exteriorRing()->getVertices().size(), 5u);
    }
    std::istringstream in(text);
    citygml::ParserParams params;
    params.tesselate = false;
    auto model = citygml::load(in, params, fan);
    EXPECT_TRUE(
        model->getRootCityObjects().at(0)->getGeometry(0).getPolygon(0)->getIndices().empty());
    EXPECT_EQ(fan->calls, 1);
}
