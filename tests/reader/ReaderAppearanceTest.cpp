#include "ReaderTestUtil.h"

#include <gtest/gtest.h>

using namespace readertest;
using citygml::TVec2f;
using citygml::TVec3f;

namespace {

std::string furniture() {
    return R"(<core:cityObjectMember><bldg:Building gml:id="b"><bldg:lod2MultiSurface>
      <gml:MultiSurface gml:id="ms"><gml:surfaceMember>)" +
           square("p1", "r1") + "</gml:surfaceMember><gml:surfaceMember>" + square("p2", "r2") +
           R"(</gml:surfaceMember></gml:MultiSurface></bldg:lod2MultiSurface></bldg:Building>
      </core:cityObjectMember>)";
}

} // namespace

TEST(ReaderAppearance, Version2TexturesAndMaterialsBySideAndTheme) {
    auto model = loadText(model2(furniture() + R"(<core:appearanceMember><app:Appearance>
      <app:theme>summer</app:theme>
      <app:surfaceDataMember><app:ParameterizedTexture gml:id="tex">
        <app:imageURI>images/wall.jpg</app:imageURI><app:mimeType>image/jpeg</app:mimeType>
        <app:target uri="#p1"><app:TexCoordList>
          <app:textureCoordinates ring="#r1">0 0 1 0 1 1 0 1 0 0</app:textureCoordinates>
        </app:TexCoordList></app:target>
      </app:ParameterizedTexture></app:surfaceDataMember>
      <app:surfaceDataMember><app:X3DMaterial gml:id="red">
        <app:ambientIntensity>0.4</app:ambientIntensity><app:diffuseColor>1 0 0</app:diffuseColor>
        <app:emissiveColor>0 0.5 0</app:emissiveColor><app:specularColor>0 0 1</app:specularColor>
        <app:shininess>0.7</app:shininess><app:transparency>0.25</app:transparency>
        <app:target>#ms</app:target></app:X3DMaterial></app:surfaceDataMember>
      <app:surfaceDataMember><app:X3DMaterial gml:id="inside"><app:isFront>false</app:isFront>
        <app:target>#p2</app:target></app:X3DMaterial></app:surfaceDataMember>
      </app:Appearance></core:appearanceMember>
      <core:appearanceMember><app:Appearance><app:theme>winter</app:theme>
      <app:surfaceDataMember xlink:href="#tex"/></app:Appearance></core:appearanceMember>)"));
    auto const& g = model->getRootCityObjects().at(0)->getGeometry(0);
    auto p1 = g.getPolygon(0);
    auto p2 = g.getPolygon(1);

    EXPECT_EQ(p1->getAllTextureThemes(true), (std::vector<std::string>{"summer", "winter"}));
    EXPECT_TRUE(p1->getAllTextureThemes(false).empty());
    auto def = p1->getTextureTargetDefinitionForTheme("summer", true);
    ASSERT_TRUE(def);
    EXPECT_EQ(def->getAppearance()->getUrl(), "images/wall.jpg");
    EXPECT_EQ(def->getAppearance()->getId(), "tex");
    EXPECT_EQ(def->getAppearance()->getMimeType(), "image/jpeg");
    auto coords = def->getTextureCoordinatesForID("r1");
    ASSERT_TRUE(coords);
    EXPECT_EQ(coords->getCoords().size(), 5u);
    EXPECT_EQ(coords->getCoords()[2], TVec2f(1, 1));
    EXPECT_FALSE(def->getTextureCoordinatesForID("r2"));
    EXPECT_EQ(p1->getTextureTargetDefinitionForTheme("winter", true), def);
    EXPECT_FALSE(p2->getTextureTargetDefinitionForTheme("summer", true));

    // The material aimed at the MultiSurface reaches both of its polygons.
    for (auto const& p : {p1, p2}) {
        auto m = p->getMaterialFor("summer");
        ASSERT_TRUE(m);
        EXPECT_EQ(m->getId(), "red");
        EXPECT_EQ(m->getDiffuse(), TVec3f(1, 0, 0));
        EXPECT_EQ(m->getEmissive(), TVec3f(0, 0.5f, 0));
        EXPECT_EQ(m->getSpecular(), TVec3f(0, 0, 1));
        EXPECT_FLOAT_EQ(m->getAmbientIntensity(), 0.4f);
        EXPECT_FLOAT_EQ(m->getShininess(), 0.7f);
        EXPECT_FLOAT_EQ(m->getTransparency(), 0.25f);
    }
    EXPECT_EQ(p2->getAllMaterialThemes(false), (std::vector<std::string>{"summer"}));
    EXPECT_EQ(p2->getMaterialFor("summer", false)->getId(), "inside");
    EXPECT_EQ(p2->getMaterialFor("summer", false)->getDiffuse(), TVec3f(0.8f, 0.8f, 0.8f));
    EXPECT_FALSE(p2->getMaterialFor("winter"));
    EXPECT_EQ(model->themes(), (std::vector<std::string>{"summer", "winter"}));
}

TEST(ReaderAppearance, Version3TextureAssociationsAndLocalAppearances) {
    auto model = loadText(R"(<core:CityModel xmlns:core="http://www.opengis.net/citygml/3.0"
      xmlns:bldg="http://www.opengis.net/citygml/building/3.0"
      xmlns:app="http://www.opengis.net/citygml/appearance/3.0"
      xmlns:gml="http://www.opengis.net/gml/3.2" xmlns:xlink="http://www.w3.org/1999/xlink">
      <core:cityObjectMember><bldg:Building gml:id="b"><core:appearance><app:Appearance>
      <app:theme>rgb</app:theme><app:surfaceData><app:ParameterizedTexture gml:id="t">
      <app:imageURI>a.png</app:imageURI><app:textureParameterization><app:TextureAssociation>
      <app:target xlink:href="#p1"/><app:textureParameterization><app:TexCoordList>
      <app:textureCoordinates ring="#r1">0 0 1 0 1 1 0 1 0 0</app:textureCoordinates>
      </app:TexCoordList></app:textureParameterization></app:TextureAssociation>
      </app:textureParameterization></app:ParameterizedTexture></app:surfaceData>
      <app:surfaceData><app:X3DMaterial gml:id="m"><app:diffuseColor>0 0.25 1</app:diffuseColor>
      <app:target>#p1</app:target></app:X3DMaterial></app:surfaceData></app:Appearance>
      </core:appearance><core:lod2MultiSurface><gml:MultiSurface><gml:surfaceMember>)" +
                          square("p1", "r1") + R"(</gml:surfaceMember></gml:MultiSurface>
      </core:lod2MultiSurface></bldg:Building></core:cityObjectMember></core:CityModel>)");
    auto p = model->getRootCityObjects().at(0)->getGeometry(0).getPolygon(0);
    auto def = p->getTextureTargetDefinitionForTheme("rgb", true);
    ASSERT_TRUE(def);
    EXPECT_EQ(def->getAppearance()->getUrl(), "a.png");
    EXPECT_EQ(def->getAppearance()->getType(), "ParameterizedTexture");
    ASSERT_TRUE(def->getTextureCoordinatesForID("#r1"));
    EXPECT_EQ(def->getTextureCoordinatesForID("r1")->getCoords()[1], TVec2f(1, 0));
    ASSERT_TRUE(p->getMaterialFor("rgb"));
    EXPECT_EQ(p->getMaterialFor("rgb")->getDiffuse(), TVec3f(0, 0.25f, 1));
    // Attribute-free appearance elements never turn into feature attributes.
    EXPECT_TRUE(model->getRootCityObjects().at(0)->getAttributes().empty());
}

TEST(ReaderAppearance, GeneratedIdsDifferAcrossLoads) {
    // Callers cache materials by id across files, so an X3DMaterial without gml:id must not
    // share its generated id with one of another file.
    std::string text = model2(furniture() + R"(<core:appearanceMember><app:Appearance>
      <app:surfaceDataMember><app:X3DMaterial><app:target>#p1</app:target></app:X3DMaterial>
      </app:surfaceDataMember></app:Appearance></core:appearanceMember>)");
    auto first = loadText(text);
    auto second = loadText(text);
    auto material = [](citygml::CityModel const& m) {
        return m.getRootCityObjects().at(0)->getGeometry(0).getPolygon(0)->getMaterialFor("");
    };
    ASSERT_TRUE(material(*first));
    ASSERT_TRUE(material(*second));
    EXPECT_TRUE(material(*first)->hasGeneratedId());
    EXPECT_NE(material(*first)->getId(), material(*second)->getId());
}
