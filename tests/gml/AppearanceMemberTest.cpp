#include "GmlTestSupport.h"

#include "gml/BasicMaterialAppearanceMemberNode.h"
#include "gml/TextureAppearanceMemberNode.h"
#include "gml/XmlWriter.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

using gml::BasicMaterialAppearanceMemberNode;
using gml::TextureAppearanceMemberNode;

const std::wstring polygonId = gmltest::referenceId + L"_poly0";
const std::wstring ringId = polygonId + L".e81b7d02-3a64-49f0-b5d3-77a1c40e92fb";
const std::string polygonText = "c3f1a0be-5d2e-4c11-9a77-0e4b2c9f6d10_poly0";
const std::string ringText = polygonText + ".e81b7d02-3a64-49f0-b5d3-77a1c40e92fb";

std::string writeMember(gml::AppearanceMemberNode& member, int version, int precision = 3) {
    std::ostringstream out;
    gml::XmlWriter writer(out, version, precision);
    writer.depth = 2;
    member.write(writer);
    EXPECT_EQ(writer.depth, 2u);
    return out.str();
}

std::shared_ptr<koltx::Material> referenceMaterial() {
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

TEST(MaterialMemberTest, ReferenceOutputInBothVersions) {
    BasicMaterialAppearanceMemberNode member(referenceMaterial());
    member.addTarget(polygonId, ringId, nullptr, 0);
    const std::string body = "    <app:X3DMaterial>\n"
                             "    <app:ambientIntensity>0.250000</app:ambientIntensity>\n"
                             "    <app:diffuseColor>0.8 0.8 0.8</app:diffuseColor>\n"
                             "    <app:emissiveColor>0 0 0</app:emissiveColor>\n"
                             "    <app:specularColor>1 1 1</app:specularColor>\n"
                             "    <app:shininess>0.500000</app:shininess>\n"
                             "    <app:transparency>0.250000</app:transparency>\n"
                             "    <app:target>" +
                             polygonText +
                             "</app:target>\n"
                             "    </app:X3DMaterial>\n";
    EXPECT_EQ(writeMember(member, 2),
              "   <app:surfaceDataMember>\n" + body + "   </app:surfaceDataMember>\n");
    EXPECT_EQ(writeMember(member, 3), "   <app:surfaceData>\n" + body + "   </app:surfaceData>\n");
}

TEST(MaterialMemberTest, ConversionLimitsTheValues) {
    koltx::MaterialBuilder builder;
    // Black ambient: no intensity, whatever the diffuse colour.
    BasicMaterialAppearanceMemberNode black(builder.ambientColor({0, 0, 0})
                                                .diffuseColor({0.5, 0.5, 0.5})
                                                .createSharedAndReset(nullptr));
    EXPECT_EQ(black.ambientIntensity, 0.0f);
    // Ambient over a black diffuse colour, and ambient brighter than diffuse: both limited to 1.
    BasicMaterialAppearanceMemberNode overBlack(builder.ambientColor({0.1, 0.1, 0.1})
                                                    .diffuseColor({0, 0, 0})
                                                    .createSharedAndReset(nullptr));
    EXPECT_EQ(overBlack.ambientIntensity, 1.0f);
    BasicMaterialAppearanceMemberNode brighter(builder.ambientColor({0.9, 0.9, 0.9})
                                                   .diffuseColor({0.3, 0.3, 0.3})
                                                   .createSharedAndReset(nullptr));
    EXPECT_EQ(brighter.ambientIntensity, 1.0f);
    // Opacity 1 and 0 give transparency 0 and 1; shininess 20 is limited to 1.
    BasicMaterialAppearanceMemberNode opaque(builder.opacity(1.0).createSharedAndReset(nullptr));
    EXPECT_EQ(opaque.transparency, 0.0f);
    BasicMaterialAppearanceMemberNode clear(builder.opacity(0.0).createSharedAndReset(nullptr));
    EXPECT_EQ(clear.transparency, 1.0f);
    auto shiny = builder.shininess(20.0).createSharedAndReset(nullptr);
    BasicMaterialAppearanceMemberNode shinyMember(shiny);
    EXPECT_NE(writeMember(shinyMember, 2).find("<app:shininess>1.000000</app:shininess>"),
              std::string::npos);
    // A value that the float can't hold never matches its own member.
    EXPECT_FALSE(shinyMember.matches(shiny));
    auto fine = builder.shininess(0.1).createSharedAndReset(nullptr);
    EXPECT_FALSE(BasicMaterialAppearanceMemberNode(fine).matches(fine));
}

TEST(MaterialMemberTest, MatchingRules) {
    auto material = referenceMaterial();
    BasicMaterialAppearanceMemberNode member(material);
    EXPECT_TRUE(member.matches(material));
    EXPECT_TRUE(member.matches(referenceMaterial()));
    EXPECT_FALSE(member.matches(nullptr));
    koltx::MaterialBuilder builder(*material);
    EXPECT_FALSE(member.matches(builder.name(L"other").createSharedAndReset(nullptr)));
    koltx::MaterialBuilder colour(*material);
    EXPECT_FALSE(member.matches(colour.specularColor({1, 1, 0.5}).createSharedAndReset(nullptr)));
    koltx::MaterialBuilder opacity(*material);
    EXPECT_FALSE(member.matches(opacity.opacity(0.5).createSharedAndReset(nullptr)));
    koltx::MaterialBuilder ambient(*material);
    EXPECT_FALSE(
        member.matches(ambient.ambientColor({0.4, 0.4, 0.4}).createSharedAndReset(nullptr)));
    // A textured material belongs to a texture member, even with equal values.
    koltx::MaterialBuilder textured(*material);
    EXPECT_FALSE(member.matches(
        textured.diffuseMap({gmltest::makeTexture(7)}, {L"t.png"}).createSharedAndReset(nullptr)));
    // An invalid or missing texture does not count as one.
    koltx::MaterialBuilder invalid(*material);
    EXPECT_TRUE(member.matches(
        invalid.diffuseMap({nullptr, std::make_shared<koltx::Texture>(nullptr)}, {L"a", L"b"})
            .createSharedAndReset(nullptr)));
}

TEST(MaterialMemberTest, TargetsAreSortedAndUnique) {
    BasicMaterialAppearanceMemberNode member(referenceMaterial());
    EXPECT_EQ(writeMember(member, 2).find("app:target"), std::string::npos);
    member.addTarget(L"b_poly1", L"r1", nullptr, 1);
    member.addTarget(L"a_poly7", L"r2", nullptr, 7);
    member.addTarget(L"", L"r3", nullptr, 0);
    member.addTarget(L"", L"r4", nullptr, 1);
    const std::string text = writeMember(member, 2);
    EXPECT_NE(text.find("    <app:target></app:target>\n"
                        "    <app:target>a_poly7</app:target>\n"
                        "    <app:target>b_poly1</app:target>\n"
                        "    </app:X3DMaterial>\n"),
              std::string::npos);
}

TEST(TextureMemberTest, ReferenceOutputInBothVersions) {
    auto quad = gmltest::makeReferenceQuad();
    TextureAppearanceMemberNode member(L"wall", gmltest::makeTexture(1), L"wall.png");
    member.addTarget(polygonId, ringId, quad, 0);
    EXPECT_EQ(writeMember(member, 2),
              "   <app:surfaceDataMember>\n"
              "    <app:ParameterizedTexture>\n"
              "    <app:imageURI>wall.png</app:imageURI>\n"
              "    <app:wrapMode>wrap</app:wrapMode>\n"
              "     <app:target uri=\"" +
                  polygonText +
                  "\">\n"
                  "      <app:TexCoordList>\n"
                  "      <app:textureCoordinates ring=\"" +
                  ringText +
                  "\">\n"
                  "      0.000 0.000 1.000 0.000 1.000 1.000 0.000 1.000 0.000 0.000 "
                  "</app:textureCoordinates>\n"
                  "      </app:TexCoordList>\n"
                  "     </app:target>\n"
                  "    </app:ParameterizedTexture>\n"
                  "   </app:surfaceDataMember>\n");
    EXPECT_EQ(writeMember(member, 3),
              "   <app:surfaceData>\n"
              "    <app:ParameterizedTexture>\n"
              "    <app:imageURI>wall.png</app:imageURI>\n"
              "    <app:wrapMode>wrap</app:wrapMode>\n"
              "     <app:textureParameterization>\n"
              "      <app:TextureAssociation>\n"
              "      <app:target>" +
                  polygonText +
                  "</app:target>\n"
                  "       <app:textureParameterization>\n"
                  "        <app:TexCoordList>\n"
                  "        <app:textureCoordinates>\n"
                  "        0.000 0.000 1.000 0.000 1.000 1.000 0.000 1.000 0.000 0.000 "
                  "</app:textureCoordinates>\n"
                  "        <app:ring>" +
                  ringText +
                  "</app:ring>\n"
                  "        </app:TexCoordList>\n"
                  "       </app:textureParameterization>\n"
                  "      </app:TextureAssociation>\n"
                  "     </app:textureParameterization>\n"
                  "    </app:ParameterizedTexture>\n"
                  "   </app:surfaceData>\n");
}

TEST(TextureMemberTest, HeadWithoutTargetsAndEmptyPolygonIds) {
    TextureAppearanceMemberNode member(L"wall", gmltest::makeTexture(1), L"img/wall.png");
    EXPECT_EQ(writeMember(member, 2), "   <app:surfaceDataMember>\n"
                                      "    <app:ParameterizedTexture>\n"
                                      "    <app:imageURI>img/wall.png</app:imageURI>\n"
                                      "    <app:wrapMode>wrap</app:wrapMode>\n"
                                      "    </app:ParameterizedTexture>\n"
                                      "   </app:surfaceDataMember>\n");
    // A patch has no polygon id; texture coordinates lose digits like vertices do, and a face
    // without UVs writes an empty list.
    auto mesh = gmltest::makeMesh({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}}, {{0, 1, 2}, {0, 2, 1}},
                                  {{0.12345, 0.5, 1, 0, 1, 1}});
    member.addTarget(L"", L"ring1", mesh, 0);
    member.addTarget(L"x", L"ring2", mesh, 1);
    const std::string v2 = writeMember(member, 2);
    EXPECT_NE(v2.find("<app:target uri=\"\">"), std::string::npos);
    EXPECT_NE(v2.find("      0.123 0.500 1.000 0.000 1.000 1.000 0.123 0.500 "
                      "</app:textureCoordinates>\n"),
              std::string::npos);
    EXPECT_NE(v2.find("<app:textureCoordinates ring=\"ring2\">\n      </app:textureCoordinates>"),
              std::string::npos);
    const std::string v3 = writeMember(member, 3);
    EXPECT_NE(v3.find("      <app:target></app:target>\n"), std::string::npos);
    EXPECT_NE(v3.find("<app:ring>ring1</app:ring>"), std::string::npos);
}

TEST(TextureMemberTest, MatchesByFirstValidTextureOnly) {
    auto texture = gmltest::makeTexture(5);
    TextureAppearanceMemberNode member(L"wall", texture, L"wall.png");
    koltx::MaterialBuilder builder;
    EXPECT_FALSE(member.matches(nullptr));
    EXPECT_FALSE(member.matches(builder.createSharedAndReset(nullptr)));
    // Same content, other colours and name: one member.
    EXPECT_TRUE(member.matches(builder.name(L"a")
                                   .diffuseColor({0.1, 0.2, 0.3})
                                   .diffuseMap({gmltest::makeTexture(5)}, {L"k"})
                                   .createSharedAndReset(nullptr)));
    // Null and invalid entries are skipped; only the first valid one is compared.
    EXPECT_TRUE(member.matches(builder
                                   .diffuseMap({nullptr, std::make_shared<koltx::Texture>(nullptr),
                                                texture, gmltest::makeTexture(9)},
                                               {L"a", L"b", L"c", L"d"})
                                   .createSharedAndReset(nullptr)));
    EXPECT_FALSE(member.matches(builder.diffuseMap({gmltest::makeTexture(9), texture}, {L"a", L"b"})
                                    .createSharedAndReset(nullptr)));
}

} // namespace
