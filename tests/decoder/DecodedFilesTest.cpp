// Every document of tests/data/decoder decodes to the summary kept in tests/golden/decoder:
// mesh paths, host axes, holes, texture coordinates, materials and their sharing, attributes,
// the spatial reference and the warnings.
#include "DecoderTestSupport.h"

#include "decoder/AttributeConversion.h"
#include "decoder/MeshPath.h"

#include <citygml/citygml.h>
#include <koltx/GeometryBuilder.h>

#include <Golden.h>

#include <algorithm>
#include <stdexcept>

using namespace decodertest;

namespace {

namespace fs = std::filesystem;

TEST(DecodedFiles, EachMatchesItsGoldenSummary) {
    std::vector<fs::path> files;
    for (auto const& entry : fs::directory_iterator(dataFile("")))
        files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    ASSERT_GT(files.size(), 20u);
    for (auto const& file : files) {
        CityGMLDecoder decoder;
        EXPECT_TRUE(testsupport::matchesGolden("decoder/" + file.stem().string() + ".txt",
                                               summarize(decodeFile(decoder, file))));
    }
}

TEST(DecodedFiles, ResultsOfAFailedLoadAreLeftAlone) {
    CityGMLDecoder decoder;
    Decoded d;
    d.results.push_back(nullptr);
    std::ifstream stream(dataFile("not_xml.gml"));
    decoder.decode(d.results, stream, nullptr, L"/x/broken.gml", nullptr, d.warnings);
    EXPECT_EQ(d.results.size(), 1u);
    EXPECT_EQ(d.warnings.rfind(L"Failed to load citygml file: ", 0), 0u) << d.warnings;
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

TEST(MeshBuilding, AFailedMeshIsReportedAndTheWalkGoesOn) {
    // A failed parent still lets its nested geometries through.
    std::wstring const outer =
        L"gen:GenericCityObject[g]\\gen:lod2Geometry[]\\gml:MultiSurface[outer]\\";
    FailingMeshDecoder nested;
    nested.failing = {1};
    Decoded d = decodeData(nested, "nested_multi_surface.gml");
    EXPECT_EQ(d.meshNames(), std::vector<std::wstring>{outer + L"gml:CompositeSurface[inner]\\"});
    EXPECT_EQ(d.warnings, L"Could not decode geometry at '" + outer + L"'. Error: x\n");

    std::wstring const a = L"bldg:Building[a]\\bldg:lod2MultiSurface[]\\gml:MultiSurface[]\\";
    std::wstring const b = L"bldg:Building[b]\\bldg:lod2MultiSurface[]\\gml:MultiSurface[]\\";
    FailingMeshDecoder first;
    first.failing = {1};
    d = decodeData(first, "two_buildings.gml");
    EXPECT_EQ(first.calls, 2);
    EXPECT_EQ(d.meshNames(), std::vector<std::wstring>{b});
    EXPECT_EQ(d.warnings, L"Could not decode geometry at '" + a + L"'. Error: x\n");
    // No line end after an unknown error: the next warning follows on the same line.
    FailingMeshDecoder both;
    both.failing = {1, 2};
    both.throwInteger = true;
    d = decodeData(both, "two_buildings.gml");
    EXPECT_TRUE(d.results.empty());
    EXPECT_EQ(d.warnings, L"Could not decote geometry at '" + a +
                              L"'. Unknown error.Could not decote geometry at '" + b +
                              L"'. Unknown error.");
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

// Counts texture loads; the first `failures` of them throw.
class CountingDecoder : public CityGMLDecoder {
public:
    int calls = 0;
    int failures = 0;

protected:
    std::shared_ptr<koltx::Texture> resolveTexture(std::wstring const& key,
                                                   std::wstring* warnings) override {
        if (++calls <= failures)
            throw std::runtime_error("disk on fire");
        return CityGMLDecoder::resolveTexture(key, warnings);
    }
};

TEST(DecodedMaterials, EachTextureIsLoadedOnceAndOutlivesOneDecode) {
    // Two texture ids, one URL: one load, also for a second decode by the same decoder.
    CountingDecoder decoder;
    Decoded const first = decodeData(decoder, "house_textures_over_materials.gml");
    Decoded const second = decodeData(decoder, "house_textures_over_materials.gml");
    EXPECT_EQ(decoder.calls, 1);
    EXPECT_EQ(first.mesh(0).getMaterials()[0], second.mesh(0).getMaterials()[0]);
    EXPECT_EQ(first.mesh(1).getMaterials()[1], second.mesh(1).getMaterials()[1]);
    // A fresh decoder builds its own.
    CountingDecoder other;
    Decoded const third = decodeData(other, "house_textures_over_materials.gml");
    EXPECT_NE(first.mesh(1).getMaterials()[1], third.mesh(1).getMaterials()[1]);
    EXPECT_EQ(*first.mesh(1).getMaterials()[1], *third.mesh(1).getMaterials()[1]);
    // A missing file is tried once too.
    CountingDecoder missing;
    decodeData(missing, "house_missing_texture.gml");
    EXPECT_EQ(missing.calls, 1);
}

TEST(DecodedMaterials, ATextureThatThrowsIsReportedOnceAndFallsBackToDefault) {
    CountingDecoder decoder;
    decoder.failures = 1;
    Decoded const d = decodeData(decoder, "house_texture.gml");
    EXPECT_EQ(decoder.calls, 1);
    EXPECT_EQ(d.warnings, L"Could not resolve texture " +
                              (testsupport::sourceDir() / "examples" / "facade.png").wstring() +
                              L" - error 'disk on fire'.\n");
    for (std::size_t i = 0; i < 2; ++i)
        for (auto const& m : d.mesh(i).getMaterials())
            EXPECT_EQ(m->getName(), L"default");
    // The polygon keeps its UVs.
    EXPECT_EQ(d.mesh(0).getFaceUVCount(0, 0), 4u);
}

// A geometry builder whose setFloat fails, as a host might when it runs out of room.
class FailingFloatBuilder : public koltx::GeometryBuilder {
public:
    void setFloat(std::wstring const&, double) override {
        throw std::runtime_error("no floats today");
    }
};

TEST(AttributeConversion, AFailingSetterSkipsOneAttribute) {
    std::ifstream stream(dataFile("attributes.gml"));
    auto model = citygml::load(stream, citygml::ParserParams());
    ASSERT_TRUE(model);
    FailingFloatBuilder builder;
    std::wstring warnings = L"before\n";
    convertAttributes(builder, *model->getRootCityObjects().at(0), warnings);
    EXPECT_EQ(warnings,
              L"before\nAttribute conversion failed - could not set attribute on the geometry\n");
    auto const geometry = builder.createSharedAndReset(nullptr);
    auto const* map = geometry->getAttributeMap();
    EXPECT_FALSE(map->hasKey(L"/fields/a"));
    EXPECT_TRUE(map->hasKey(L"/fields/b") && map->hasKey(L"/fields/d"));
}

} // namespace
