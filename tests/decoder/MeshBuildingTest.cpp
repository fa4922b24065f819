#include "DecoderTestSupport.h"

#include "decoder/MeshPath.h"

#include <cmath>
#include <stdexcept>

using namespace decodertest;

namespace {

std::string wallBuilding(std::string const& geometry) {
    return cityModel("<core:cityObjectMember><bldg:Building gml:id=\"b\">" + geometry +
                     "</bldg:Building></core:cityObjectMember>");
}

// A parameterized texture on polygon `target`, coordinates per ring id.
std::string texture(std::string const& target,
                    std::vector<std::pair<std::string, std::string>> const& rings,
                    std::string const& id = "tex", std::string const& url = "missing.png") {
    std::string text = "<app:appearanceMember><app:Appearance><app:theme>t</app:theme>"
                       "<app:surfaceDataMember><app:ParameterizedTexture gml:id=\"" +
                       id + "\"><app:imageURI>" + url + "</app:imageURI><app:target uri=\"#" +
                       target + "\"><app:TexCoordList>";
    for (auto const& [ring, coords] : rings) {
        text += "<app:textureCoordinates ring=\"#" + ring + "\">" + coords +
                "</app:textureCoordinates>";
    }
    return text + "</app:TexCoordList></app:target></app:ParameterizedTexture>"
                  "</app:surfaceDataMember></app:Appearance></app:appearanceMember>";
}

std::vector<double> uvs(koltx::Mesh const& mesh, uint32_t face) {
    std::vector<double> out;
    uint32_t const* idx = mesh.getFaceUVIndices(face, 0);
    for (uint32_t i = 0; i < mesh.getFaceUVCount(face, 0); ++i) {
        out.push_back(mesh.getUVCoords(0)[2 * idx[i]]);
        out.push_back(mesh.getUVCoords(0)[2 * idx[i] + 1]);
    }
    return out;
}

// Fails the mesh creations whose number (from 1) is in `failing`, with the given exception.
class FailingMeshDecoder : public CityGMLDecoder {
public:
    std::vector<int> failing;
    bool throwInteger = false;
    int calls = 0;

protected:
    std::shared_ptr<koltx::Mesh> createMesh(koltx::MeshBuilder& builder,
                                            std::wstring* warnings) override {
        ++calls;
        if (std::find(failing.begin(), failing.end(), calls) != failing.end()) {
            if (throwInteger)
                throw 7;
            throw std::runtime_error("x");
        }
        return CityGMLDecoder::createMesh(builder, warnings);
    }
};

TEST(MeshBuilding, RingsBecomeFacesInHostAxes) {
    Decoded const d = decode(wallBuilding(
        multiSurface("bldg:lod2MultiSurface", {polygon("tri", "1 2 3 4 0 0 4 5 6 1 2 3")})));
    ASSERT_TRUE(d.geometry());
    koltx::Mesh const& mesh = d.mesh(0);
    ASSERT_EQ(mesh.getFaceCount(), 1u);
    EXPECT_EQ(mesh.getVertexCount(), 3u);
    EXPECT_EQ(mesh.getVertexCoords(), (std::vector<double>{1, 3, -2, 4, 0, -0.0, 4, 6, -5}));
    // y = 0 becomes -0: the sign is flipped, not subtracted.
    EXPECT_TRUE(std::signbit(mesh.getVertexCoords()[5]));
    EXPECT_EQ(mesh.getUVSetCount(), 0u);
    EXPECT_EQ(mesh.getFaceMaterialIndices(), std::vector<uint32_t>{0});
    ASSERT_EQ(mesh.getMaterials().size(), 1u);
}

TEST(MeshBuilding, InteriorRingsAreHoleFacesWithoutVertexSharing) {
    Decoded const d = decode(wallBuilding(
        multiSurface("bldg:lod2MultiSurface",
                     {polygon("p", "0 0 0 4 0 0 4 4 0 0 4 0 0 0 0",
                              {"1 1 0 1 2 0 2 2 0 2 1 0 1 1 0", "3 3 0 3 3.5 0 3.5 3 0 3 3 0"}),
                      polygon("q", square(1))})));
    koltx::Mesh const& mesh = d.mesh(0);
    ASSERT_EQ(mesh.getFaceCount(), 4u);
    EXPECT_EQ(mesh.getVertexCount(), 4u + 4u + 3u + 4u);
    ASSERT_EQ(mesh.getFaceHoleCount(0), 2u);
    EXPECT_EQ(mesh.getFaceHoleIndices(0)[0], 1u);
    EXPECT_EQ(mesh.getFaceHoleIndices(0)[1], 2u);
    EXPECT_TRUE(mesh.isHoleFace(1));
    EXPECT_TRUE(mesh.isHoleFace(2));
    EXPECT_FALSE(mesh.isHoleFace(3));
    EXPECT_EQ(mesh.getFaceHoleCount(3), 0u);
    // Vertex indices simply count up.
    std::vector<uint32_t> expected(15);
    for (uint32_t i = 0; i < 15; ++i)
        expected[i] = i;
    EXPECT_EQ(mesh.getVertexIndices(), expected);
}

TEST(MeshBuilding, TextureCoordinatesSurplusLackAndAbsence) {
    std::string const pentagon = "0 0 0 2 0 0 3 0 1 1 0 2 -1 0 1 0 0 0";
    std::string const text = wallBuilding(multiSurface(
        "bldg:lod2MultiSurface",
        {polygon("many", pentagon), polygon("few", pentagon),
         polygon("hole", "0 0 0 4 0 0 4 4 0 0 4 0 0 0 0", {"1 1 0 1 2 0 2 2 0 2 1 0 1 1 0"})}));
    // 6 positions with 7 pairs, 6 positions with 3 pairs, a hole without coordinates.
    std::string const withTextures =
        text.substr(0, text.rfind("</core:CityModel>")) +
        texture("many", {{"many-r0", "0 0 .1 0 .2 0 .3 0 .4 0 .5 0 .6 0"}}, "t1") +
        texture("few", {{"few-r0", "0 .1 0 .2 0 .3"}}, "t2") +
        texture("hole", {{"hole-r0", "0 0 1 0 1 1 0 1 0 0"}}, "t3") + "</core:CityModel>";
    Decoded const d = decode(withTextures);
    ASSERT_TRUE(d.geometry()) << d.warnings;
    koltx::Mesh const& mesh = d.mesh(0);
    EXPECT_EQ(uvs(mesh, 0), (std::vector<double>{0, 0, .1f, 0, .2f, 0, .3f, 0, .4f, 0}));
    EXPECT_EQ(uvs(mesh, 1), (std::vector<double>{0, .1f, 0, .2f, 0, .3f, 0, 0, 0, 0}));
    EXPECT_EQ(mesh.getFaceUVCount(2, 0), 4u);
    EXPECT_EQ(mesh.getFaceUVCount(3, 0), 0u);
    std::wstring const expected =
        L"Ring 'many-r0' has more of texture coordinates than vertices for theme 't'. Dropping "
        L"surplus.\n"
        L"Ring 'few-r0' has not enough texture coordinates for all vertices vertices for theme "
        L"'t'. Using 0/0 coordinates.\n";
    // The textures themselves cannot be found; those lines come from the host.
    std::wstring ringWarnings;
    std::wistringstream lines(d.warnings);
    for (std::wstring line; std::getline(lines, line);) {
        if (line.rfind(L"Ring '", 0) == 0)
            ringWarnings += line + L"\n";
    }
    EXPECT_EQ(ringWarnings, expected);
}

TEST(MeshBuilding, NestedGeometriesExtendTheirParentsPath) {
    std::string const solid =
        "<bldg:lod2Solid><gml:Solid gml:id=\"s\"><gml:exterior><gml:CompositeSurface gml:id=\"cs\">"
        "<gml:surfaceMember>" +
        polygon("a", square()) + "</gml:surfaceMember><gml:surfaceMember>" +
        polygon("b", square(1)) +
        "</gml:surfaceMember></gml:CompositeSurface></gml:exterior></gml:Solid></bldg:lod2Solid>";
    Decoded const d = decode(wallBuilding(solid));
    EXPECT_EQ(d.meshNames(),
              std::vector<std::wstring>{L"bldg:Building[b]\\bldg:lod2Solid[]\\"
                                        L"gml:Solid[s]\\gml:CompositeSurface[cs]\\"});
    EXPECT_EQ(d.mesh(0).getFaceCount(), 2u);
}

TEST(MeshBuilding, LodFallbackPath) {
    EXPECT_EQ(geometryMeshPath(L"bldg:Building[b1]\\", L"", 2),
              L"bldg:Building[b1]\\gml:lod2MultiSurface\\gml:multisurface");
    EXPECT_EQ(geometryMeshPath(L"", L"gml:multisurface", 0),
              L"gml:lod0MultiSurface\\gml:multisurface");
    EXPECT_EQ(geometryMeshPath(L"p[]\\", L"bldg:lod3solid\\gml:solid[s]\\", 1),
              L"p[]\\bldg:lod3Solid[]\\gml:Solid[s]\\");
    // Under a fallback parent the two texts join without a backslash between them.
    EXPECT_EQ(
        geometryMeshPath(L"gml:lod2MultiSurface\\gml:multisurface", L"gml:compositesurface\\", 2),
        L"gml:lod2MultiSurface\\gml:multisurfacegml:CompositeSurface[]\\");
}

TEST(MeshBuilding, AFailedParentMeshStillLetsItsNestedGeometriesThrough) {
    std::string const text = cityModel(
        "<core:cityObjectMember><gen:GenericCityObject gml:id=\"g\"><gen:lod2Geometry>"
        "<gml:MultiSurface gml:id=\"outer\"><gml:surfaceMember>" +
        polygon("p", square()) +
        "</gml:surfaceMember><gml:surfaceMember><gml:CompositeSurface gml:id=\"inner\">"
        "<gml:surfaceMember>" +
        polygon("q", square(1)) +
        "</gml:surfaceMember></gml:CompositeSurface></gml:surfaceMember></gml:MultiSurface>"
        "</gen:lod2Geometry></gen:GenericCityObject></core:cityObjectMember>");
    std::wstring const outer =
        L"gen:GenericCityObject[g]\\gen:lod2Geometry[]\\gml:MultiSurface[outer]\\";
    CityGMLDecoder plain;
    EXPECT_EQ(decode(plain, text).meshNames(),
              (std::vector<std::wstring>{outer, outer + L"gml:CompositeSurface[inner]\\"}));

    FailingMeshDecoder decoder;
    decoder.failing = {1};
    Decoded const d = decode(decoder, text);
    EXPECT_EQ(d.meshNames(), std::vector<std::wstring>{outer + L"gml:CompositeSurface[inner]\\"});
    EXPECT_EQ(d.warnings, L"Could not decode geometry at '" + outer + L"'. Error: x\n");
}

TEST(MeshBuilding, AFailedMeshIsReportedAndTheWalkGoesOn) {
    std::string const text =
        cityModel("<core:cityObjectMember><bldg:Building gml:id=\"a\">" +
                  multiSurface("bldg:lod2MultiSurface", {polygon("p", square())}) +
                  "</bldg:Building></core:cityObjectMember><core:cityObjectMember><bldg:Building "
                  "gml:id=\"b\">" +
                  multiSurface("bldg:lod2MultiSurface", {polygon("q", square())}) +
                  "</bldg:Building></core:cityObjectMember>");
    {
        FailingMeshDecoder decoder;
        decoder.failing = {1};
        Decoded const d = decode(decoder, text);
        EXPECT_EQ(decoder.calls, 2);
        EXPECT_EQ(d.meshNames(),
                  std::vector<std::wstring>{
                      L"bldg:Building[b]\\bldg:lod2MultiSurface[]\\gml:MultiSurface[]\\"});
        EXPECT_EQ(d.warnings,
                  L"Could not decode geometry at 'bldg:Building[a]\\bldg:lod2MultiSurface[]"
                  L"\\gml:MultiSurface[]\\'. Error: x\n");
    }
    {
        FailingMeshDecoder decoder;
        decoder.failing = {1, 2};
        decoder.throwInteger = true;
        Decoded const d = decode(decoder, text);
        EXPECT_TRUE(d.results.empty());
        // No line end after an unknown error: the next warning follows on the same line.
        EXPECT_EQ(d.warnings,
                  L"Could not decote geometry at 'bldg:Building[a]\\bldg:lod2MultiSurface[]"
                  L"\\gml:MultiSurface[]\\'. Unknown error.Could not decote geometry at "
                  L"'bldg:Building[b]\\bldg:lod2MultiSurface[]\\gml:MultiSurface[]\\'. Unknown "
                  L"error.");
    }
}

} // namespace
