#include "DecoderTestSupport.h"

#include <Golden.h>

#include <citygml/citygml.h>
#include <koltx/Material.h>

#include <filesystem>
#include <fstream>
#include <regex>
#include <set>

namespace fs = std::filesystem;
using namespace decodertest;

namespace {

std::vector<fs::path> corpusFiles() {
    std::vector<fs::path> files;
    for (auto const& entry : fs::recursive_directory_iterator(testsupport::testDataDir())) {
        std::string const ext = entry.path().extension().string();
        if (entry.is_regular_file() && (ext == ".gml" || ext == ".xml"))
            files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

void countGeometries(citygml::Geometry const& g, std::size_t& count) {
    if (g.getPolygonsCount() > 0)
        ++count;
    for (unsigned i = 0; i < g.getGeometriesCount(); ++i)
        countGeometries(g.getGeometry(i), count);
}

// Geometries with polygons, and the texture files the polygons name, as the reader sees them.
void survey(citygml::CityObject const& o, std::size_t& count, std::set<std::string>& urls) {
    for (unsigned i = 0; i < o.getChildCityObjectsCount(); ++i)
        survey(o.getChildCityObject(i), count, urls);
    std::vector<citygml::Geometry const*> stack;
    for (unsigned i = 0; i < o.getGeometriesCount(); ++i)
        stack.push_back(&o.getGeometry(i));
    while (!stack.empty()) {
        citygml::Geometry const* g = stack.back();
        stack.pop_back();
        if (g->getPolygonsCount() > 0)
            ++count;
        for (unsigned i = 0; i < g->getPolygonsCount(); ++i) {
            auto const p = g->getPolygon(i);
            auto const themes = p->getAllTextureThemes(true);
            if (themes.empty())
                continue;
            auto const def = p->getTextureTargetDefinitionForTheme(themes[0], true);
            if (def && def->getAppearance())
                urls.insert(def->getAppearance()->getUrl());
        }
        for (unsigned i = 0; i < g->getGeometriesCount(); ++i)
            stack.push_back(&g->getGeometry(i));
    }
}

// One or more components "tag[id]\", or the LOD fallback, which may be followed by more.
bool isWellFormedMeshPath(std::wstring const& name) {
    static std::wregex const pattern(
        LR"(^(?:[^\[\\\]]+\[[^\\]*\]\\|gml:lod[0-9]+MultiSurface\\gml:multisurface)+$)");
    return std::regex_match(name, pattern);
}

TEST(DecoderCorpus, EveryFileDecodesAsTheReaderSeesIt) {
    REQUIRE_TESTDATA();
    std::size_t files = 0;
    std::size_t meshes = 0;
    for (fs::path const& file : corpusFiles()) {
        SCOPED_TRACE(file.string());
        std::size_t expected = 0;
        std::set<std::string> urls;
        bool loads = true;
        try {
            std::ifstream stream(file, std::ios::binary);
            citygml::ParserParams params;
            params.tesselate = false;
            auto model = citygml::load(stream, params);
            for (auto const* root : model->getRootCityObjects())
                survey(*root, expected, urls);
        } catch (std::runtime_error const&) {
            loads = false;
        }
        CityGMLDecoder decoder;
        Decoded const d = decodeFile(decoder, file);
        if (!loads) {
            EXPECT_TRUE(d.results.empty());
            EXPECT_EQ(d.warnings.rfind(L"Failed to load citygml file: ", 0), 0u);
            continue;
        }
        ++files;
        std::vector<std::wstring> const names = d.meshNames();
        EXPECT_EQ(names.size(), expected);
        EXPECT_EQ(d.results.size(), expected > 0 ? 1u : 0u);
        meshes += names.size();
        for (auto const& name : names)
            EXPECT_TRUE(isWellFormedMeshPath(name)) << std::string(name.begin(), name.end());

        // Every texture file that exists beside the document is loaded.
        std::set<std::wstring> loaded;
        if (auto g = d.geometry()) {
            for (auto const& m : g->getMeshes()) {
                for (auto const& material : m->getMaterials()) {
                    for (std::size_t i = 0; i < material->getDiffuseMap().size(); ++i) {
                        if (material->getDiffuseMap()[i] && material->getDiffuseMap()[i]->isValid())
                            loaded.insert(fs::path(material->getDiffuseMapKeys()[i])
                                              .lexically_normal()
                                              .wstring());
                    }
                }
            }
        }
        for (std::string const& url : urls) {
            fs::path const image = (file.parent_path() / url).lexically_normal();
            if (fs::is_regular_file(image)) {
                EXPECT_EQ(loaded.count(image.wstring()), 1u) << url;
            }
        }
        EXPECT_EQ(d.warnings.find(L"Could not resolve texture"), std::wstring::npos);
        EXPECT_EQ(d.warnings.find(L"Could not decode geometry"), std::wstring::npos);
    }
    EXPECT_GT(files, 100u);
    EXPECT_GT(meshes, 1000u);
}

TEST(DecoderCorpus, MeshCountAndFirstAndLastPathOfSomeFiles) {
    REQUIRE_TESTDATA();
    std::string text;
    for (char const* file :
         {"citygml2_lod2_buildings/berlin_lod2_buildings_test_area.gml",
          "citygml3/FZK-Haus-LoD3-KIT-IAI-KHH-B36-V1__v3.gml", "bridges/BridgeAndBuilding.gml",
          "citygml1/LOD2_Building_v100.gml", "relief_tin/Terrain_LOD0.gml"}) {
        CityGMLDecoder decoder;
        auto const names = decodeFile(decoder, testsupport::testDataDir() / file).meshNames();
        ASSERT_FALSE(names.empty()) << file;
        text += std::string(file) + ": " + std::to_string(names.size()) + " meshes\n  " +
                kolt::StringUtils::toUTF8(names.front()) + "\n  " +
                kolt::StringUtils::toUTF8(names.back()) + "\n";
    }
    // Checked by hand against the documents.
    EXPECT_TRUE(testsupport::matchesGolden("decoder/corpus_paths.txt", text, false));
}

} // namespace
