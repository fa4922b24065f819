#include "DecoderTestSupport.h"

#include "TestData.h"

#include <koltx/Material.h>
#include <koltx/Texture.h>

#include <stdexcept>

using namespace decodertest;

namespace {

// Counts texture loads; the first `failures` of them throw.
class CountingDecoder : public CityGMLDecoder {
public:
    int calls = 0;
    int failures = 0;
    std::vector<std::wstring> keys;

protected:
    std::shared_ptr<koltx::Texture> resolveTexture(std::wstring const& key,
                                                   std::wstring* warnings) override {
        ++calls;
        keys.push_back(key);
        if (calls <= failures)
            throw std::runtime_error("disk on fire");
        return CityGMLDecoder::resolveTexture(key, warnings);
    }
};

std::string parameterizedTexture(std::string const& id, std::string const& url,
                                 std::vector<std::string> const& targets) {
    std::string text = "<app:surfaceDataMember><app:ParameterizedTexture gml:id=\"" + id +
                       "\"><app:imageURI>" + url + "</app:imageURI>";
    for (auto const& t : targets) {
        text +=
            "<app:target uri=\"#" + t + "\"><app:TexCoordList><app:textureCoordinates ring=\"#" +
            t +
            "-r0\">0 0 1 0 1 1 0 1 0 0</app:textureCoordinates></app:TexCoordList></app:target>";
    }
    return text + "</app:ParameterizedTexture></app:surfaceDataMember>";
}

std::string x3dMaterial(std::string const& id, std::vector<std::string> const& targets) {
    std::string text = "<app:surfaceDataMember><app:X3DMaterial gml:id=\"" + id +
                       "\"><app:ambientIntensity>0.2</app:ambientIntensity>"
                       "<app:diffuseColor>0.5 0.5 0.5</app:diffuseColor>"
                       "<app:emissiveColor>0.1 0.2 0.3</app:emissiveColor>"
                       "<app:specularColor>0.4 0.5 0.6</app:specularColor>"
                       "<app:shininess>0.3</app:shininess>"
                       "<app:transparency>0.25</app:transparency>";
    for (auto const& t : targets)
        text += "<app:target>#" + t + "</app:target>";
    return text + "</app:X3DMaterial></app:surfaceDataMember>";
}

std::string appearance(std::string const& theme, std::string const& members) {
    return "<app:appearanceMember><app:Appearance><app:theme>" + theme + "</app:theme>" + members +
           "</app:Appearance></app:appearanceMember>";
}

// Building "b" with two lod2 surfaces: wall w (polygons w1, w2) and roof r (polygons r1, r2).
std::string house(std::string const& appearances) {
    auto surface = [](std::string const& type, std::string const& id) {
        return "<bldg:boundedBy><bldg:" + type + " gml:id=\"" + id + "\">" +
               multiSurface("bldg:lod2MultiSurface",
                            {polygon(id + "1", square()), polygon(id + "2", square(1))}) +
               "</bldg:" + type + "></bldg:boundedBy>";
    };
    return cityModel("<core:cityObjectMember><bldg:Building gml:id=\"b\">" +
                     surface("WallSurface", "w") + surface("RoofSurface", "r") +
                     "</bldg:Building></core:cityObjectMember>" + appearances);
}

std::wstring examplesKey() {
    return (testsupport::sourceDir() / "examples" / "house.gml").wstring();
}

TEST(DecodedMaterials, PolygonsWithoutAppearanceShareTheDefaultMaterial) {
    CityGMLDecoder decoder;
    Decoded const d = decode(decoder, house(""));
    ASSERT_EQ(d.meshNames().size(), 2u);
    for (std::size_t i = 0; i < 2; ++i) {
        koltx::Mesh const& mesh = d.mesh(i);
        ASSERT_EQ(mesh.getMaterials().size(), 1u);
        EXPECT_EQ(mesh.getFaceMaterialIndices(), (std::vector<uint32_t>{0, 0}));
        EXPECT_EQ(mesh.getMaterials()[0]->getName(), L"default");
        EXPECT_EQ(mesh.getMaterials()[0]->getDiffuseColor(), (std::vector<double>{1, 1, 1}));
    }
    EXPECT_EQ(d.mesh(0).getMaterials()[0], d.mesh(1).getMaterials()[0]);
}

TEST(DecodedMaterials, X3DMaterialFieldsAndSharing) {
    Decoded const d = decode(house(appearance("m", x3dMaterial("mat", {"w2", "r1", "r2"}))));
    koltx::Mesh const& wall = d.mesh(0);
    koltx::Mesh const& roof = d.mesh(1);
    ASSERT_EQ(wall.getMaterials().size(), 2u);
    EXPECT_EQ(wall.getFaceMaterialIndices(), (std::vector<uint32_t>{0, 1}));
    ASSERT_EQ(roof.getMaterials().size(), 1u);
    EXPECT_EQ(roof.getFaceMaterialIndices(), (std::vector<uint32_t>{0, 0}));
    // One host material per appearance, though each mesh has its own index for it.
    EXPECT_EQ(wall.getMaterials()[1], roof.getMaterials()[0]);

    koltx::Material const& m = *roof.getMaterials()[0];
    EXPECT_DOUBLE_EQ(m.getOpacity(), 0.75);
    EXPECT_DOUBLE_EQ(m.getShininess(), static_cast<double>(0.3f));
    double const ambient = static_cast<double>(0.5f) * static_cast<double>(0.2f);
    EXPECT_EQ(m.getAmbientColor(), (std::vector<double>{ambient, ambient, ambient}));
    EXPECT_NEAR(ambient, 0.1, 1e-7);
    EXPECT_EQ(m.getDiffuseColor(), (std::vector<double>{0.5, 0.5, 0.5}));
    EXPECT_EQ(m.getEmissiveColor(), (std::vector<double>{0.1f, 0.2f, 0.3f}));
    EXPECT_EQ(m.getSpecularColor(), (std::vector<double>{0.4f, 0.5f, 0.6f}));
    EXPECT_TRUE(m.getDiffuseMap().empty());
}

TEST(DecodedMaterials, TexturesWinOverMaterialsAndResolveOncePerUrl) {
    CountingDecoder decoder;
    std::string const text =
        house(appearance("a", parameterizedTexture("t1", "facade.png", {"w1", "r1"}) +
                                  parameterizedTexture("t2", "./facade.png", {"w2"}) +
                                  x3dMaterial("mat", {"w1", "r2"})));
    Decoded const d = decode(decoder, text, examplesKey());
    EXPECT_EQ(d.warnings, L"");
    // Two texture ids, one URL: one load.
    EXPECT_EQ(decoder.calls, 1);
    std::wstring const anchored = (testsupport::sourceDir() / "examples" / "facade.png").wstring();
    EXPECT_EQ(decoder.keys, std::vector<std::wstring>{anchored});

    koltx::Mesh const& wall = d.mesh(0);
    ASSERT_EQ(wall.getMaterials().size(), 2u);
    koltx::Material const& t1 = *wall.getMaterials()[0];
    ASSERT_EQ(t1.getDiffuseMap().size(), 1u);
    ASSERT_TRUE(t1.getDiffuseMap()[0]);
    EXPECT_EQ(t1.getDiffuseMap()[0]->getWidth(), 32u);
    EXPECT_EQ(t1.getDiffuseMapKeys(), std::vector<std::wstring>{anchored});
    EXPECT_EQ(t1.getDiffuseMap()[0], wall.getMaterials()[1]->getDiffuseMap()[0]);
    EXPECT_NE(wall.getMaterials()[0], wall.getMaterials()[1]);

    // r1 has the texture (and a material in no theme of its own), r2 only the material.
    koltx::Mesh const& roof = d.mesh(1);
    ASSERT_EQ(roof.getMaterials().size(), 2u);
    EXPECT_EQ(roof.getMaterials()[0], wall.getMaterials()[0]);
    EXPECT_TRUE(roof.getMaterials()[1]->getDiffuseMap().empty());
    EXPECT_DOUBLE_EQ(roof.getMaterials()[1]->getOpacity(), 0.75);
    EXPECT_EQ(roof.getFaceUVCount(0, 0), 4u);
}

TEST(DecodedMaterials, APolygonWithTextureAndMaterialInOneThemeGetsTheTexture) {
    CountingDecoder decoder;
    Decoded const d = decode(decoder,
                             house(appearance("a", parameterizedTexture("t", "facade.png", {"w1"}) +
                                                       x3dMaterial("mat", {"w1"}))),
                             examplesKey());
    ASSERT_EQ(d.mesh(0).getMaterials().size(), 2u);
    EXPECT_EQ(d.mesh(0).getMaterials()[0]->getDiffuseMap().size(), 1u);
    EXPECT_EQ(d.mesh(0).getMaterials()[1]->getName(), L"default");
}

TEST(DecodedMaterials, ATextureThatThrowsIsReportedOnceAndFallsBackToDefault) {
    CountingDecoder decoder;
    decoder.failures = 1;
    Decoded const d =
        decode(decoder,
               house(appearance("a", parameterizedTexture("t", "facade.png", {"w1", "w2", "r1"}))),
               examplesKey());
    EXPECT_EQ(decoder.calls, 1);
    std::wstring const anchored = (testsupport::sourceDir() / "examples" / "facade.png").wstring();
    EXPECT_EQ(d.warnings, L"Could not resolve texture " + anchored + L" - error 'disk on fire'.\n");
    for (std::size_t i = 0; i < 2; ++i) {
        for (auto const& m : d.mesh(i).getMaterials())
            EXPECT_EQ(m->getName(), L"default");
    }
    // The polygon keeps its UVs.
    EXPECT_EQ(d.mesh(0).getFaceUVCount(0, 0), 4u);
}

TEST(DecodedMaterials, AMissingTextureIsToldByTheHostAndTriedOnce) {
    CountingDecoder decoder;
    Decoded const d = decode(
        decoder, house(appearance("a", parameterizedTexture("t", "nothere.png", {"w1", "r1"}))),
        examplesKey());
    EXPECT_EQ(decoder.calls, 1);
    EXPECT_NE(d.warnings.find(L"nothere.png"), std::wstring::npos) << d.warnings;
    EXPECT_EQ(d.mesh(0).getMaterials()[0]->getName(), L"default");
}

TEST(DecodedMaterials, CachesOutliveOneDecode) {
    CountingDecoder decoder;
    std::string const text = house(appearance("a", parameterizedTexture("t", "facade.png", {"w1"}) +
                                                       x3dMaterial("mat", {"r1"})));
    Decoded const first = decode(decoder, text, examplesKey());
    Decoded const second = decode(decoder, text, examplesKey());
    EXPECT_EQ(decoder.calls, 1);
    EXPECT_EQ(first.mesh(0).getMaterials()[0], second.mesh(0).getMaterials()[0]);
    EXPECT_EQ(first.mesh(1).getMaterials()[0], second.mesh(1).getMaterials()[0]);
    // A fresh decoder builds its own.
    CountingDecoder other;
    Decoded const third = decode(other, text, examplesKey());
    EXPECT_NE(first.mesh(1).getMaterials()[0], third.mesh(1).getMaterials()[0]);
    EXPECT_EQ(*first.mesh(1).getMaterials()[0], *third.mesh(1).getMaterials()[0]);
}

} // namespace
