// CityGML 2.0 files of the corpus go through the tool's conversion (decode, encode) and are
// decoded again. Whatever the encoder keeps must come back: meshes, their features, levels of
// detail and geometry ids, the polygon area, each texture image once; and the documents must
// pass the official schemas and Debian's libcitygml.
#include "EncodeOptions.h"
#include "FileDecoder.h"
#include "GmlEncodeCommand.h"
#include "ToolTestHost.h"

#include <kolt/StringUtils.h>
#include <koltx/ExtensionManager.h>
#include <koltx/Geometry.h>
#include <koltx/Material.h>
#include <koltx/Mesh.h>
#include <koltx/MeshUtils.h>
#include <koltx/Texture.h>

#include <Process.h>
#include <SchemaCheck.h>
#include <ScratchDir.h>
#include <TestData.h>
#include <gtest/gtest.h>
#include <vocabulary/GmlGeometryTags.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>

namespace {

namespace fs = std::filesystem;

bool isCityGML2(fs::path const& file) {
    std::ifstream in(file, std::ios::binary);
    std::string head(6000, '\0');
    in.read(head.data(), static_cast<std::streamsize>(head.size()));
    head.resize(static_cast<std::size_t>(in.gcount()));
    return head.find("\"http://www.opengis.net/citygml/2.0\"") != std::string::npos &&
           head.find("citygml/3.0") == std::string::npos;
}

std::vector<fs::path> corpus() {
    std::vector<fs::path> files;
    for (auto const& entry : fs::recursive_directory_iterator(testsupport::testDataDir())) {
        auto const ext = entry.path().extension();
        if (!entry.is_regular_file() || (ext != ".gml" && ext != ".xml") ||
            entry.path().string().find("/schemas/") != std::string::npos ||
            entry.path().filename().string().rfind("NOT_WELLFORMED", 0) == 0)
            continue;
        if (isCityGML2(entry.path()))
            files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

// What must come back of a mesh path: the tags (features, properties, levels of detail) and
// the ids of geometries. Ids of features are not written, and ids that the tool made up to keep
// meshes apart don't count.
std::wstring pathKey(std::wstring const& path) {
    std::wstring key;
    std::size_t start = 0;
    for (std::size_t end; (end = path.find(L'\\', start)) != std::wstring::npos; start = end + 1) {
        std::wstring const step = path.substr(start, end - start);
        auto const bracket = step.find(L'[');
        std::wstring const tag = step.substr(0, bracket);
        std::wstring id = bracket == std::wstring::npos
                              ? L""
                              : step.substr(bracket + 1, step.size() - bracket - 2);
        if (!isGmlGeometryTag(tag) || id.rfind(L"gmlcodec_", 0) == 0)
            id.clear();
        // A shared geometry's further copies carry its id with a suffix.
        auto const suffix = id.find(L"_gmlcodec_");
        if (suffix != std::wstring::npos)
            id.erase(suffix);
        key += tag + L"[" + id + L"]\\";
    }
    return key;
}

// Faces with holes are written as the triangles that cover them; for a valid polygon that is
// its area with the holes subtracted, for an invalid one (holes that overlap or stick out) it is
// what the tesselator makes of it.
// Elements of application domain extensions keep a prefix that no table of the document
// declares, so a reader cannot place what stands below them; such meshes are left out.
bool underForeignPrefix(std::wstring const& path) {
    static std::set<std::wstring> const known = {L"app", L"bldg", L"brid", L"core", L"dem",
                                                 L"frn", L"gen",  L"grp",  L"luse", L"trans",
                                                 L"tun", L"veg",  L"wtr",  L"gml"};
    std::size_t start = 0;
    for (std::size_t end; (end = path.find(L'\\', start)) != std::wstring::npos; start = end + 1) {
        auto const colon = path.find(L':', start);
        if (colon < end && known.count(path.substr(start, colon - start)) == 0)
            return true;
    }
    return false;
}

std::vector<std::shared_ptr<koltx::Mesh>>
placeableMeshes(std::shared_ptr<koltx::Geometry> const& geometry, std::size_t* foreign = nullptr) {
    std::vector<std::shared_ptr<koltx::Mesh>> meshes;
    if (geometry)
        for (auto const& mesh : geometry->getMeshes()) {
            if (!underForeignPrefix(mesh->getName()))
                meshes.push_back(mesh);
            else if (foreign != nullptr)
                ++*foreign;
        }
    return meshes;
}

double totalArea(std::vector<std::shared_ptr<koltx::Mesh>> const& meshes) {
    double area = 0;
    for (auto const& mesh : meshes)
        area += koltx::MeshUtils::surfaceArea(*koltx::MeshUtils::triangulateHoles(mesh));
    return area;
}

std::size_t distinctTextures(std::shared_ptr<koltx::Geometry> const& geometry) {
    std::vector<std::shared_ptr<koltx::Texture>> seen;
    if (!geometry)
        return 0;
    for (auto const& mesh : geometry->getMeshes()) {
        std::set<std::uint32_t> used(mesh->getFaceMaterialIndices().begin(),
                                     mesh->getFaceMaterialIndices().end());
        for (auto index : used) {
            if (index >= mesh->getMaterials().size() || !mesh->getMaterials()[index])
                continue;
            auto texture = mesh->getMaterials()[index]->getFirstValidTexture();
            if (texture && std::none_of(seen.begin(), seen.end(),
                                        [&](auto const& t) { return *t == *texture; }))
                seen.push_back(texture);
        }
    }
    return seen.size();
}

// Messages of the schema check that are neither known deviations nor carried over from an
// input that breaks the schemas itself; `gap` tells whether a lower-case property was seen.
std::vector<std::string> unexpectedSchemaMessages(fs::path const& file, bool* gap = nullptr) {
    auto const report = testsupport::checkSchema(file, 2);
    if (gap != nullptr)
        *gap = report.deviations.count("lower-case-property") != 0;
    return report.unexpected;
}

struct OracleResult {
    bool ok = false;
    long polygons = 0;
    double area = 0;
};

OracleResult oracle(fs::path const& file) {
    OracleResult result;
#ifdef ORACLE_AREA_EXE
    std::string const output = testsupport::runCommand(std::string(ORACLE_AREA_EXE) + " " +
                                                       testsupport::quote(file.string()))
                                   .out;
    result.ok = std::sscanf(output.c_str(), "%ld %lf", &result.polygons, &result.area) == 2;
#else
    (void)file;
#endif
    return result;
}

bool near(double a, double b, double relative) {
    return std::fabs(a - b) <= relative * std::max({std::fabs(a), std::fabs(b), 1e-12});
}

} // namespace

TEST(RoundTrip, EveryCityGML2FileComesBackWithItsMeshesAreaAndTextures) {
    REQUIRE_TESTDATA();
    bool const lint = testsupport::schemaCheckUnavailable().empty();
    testsupport::ScratchDir const folder("roundtrip");
    auto const files = corpus();
    ASSERT_GT(files.size(), 50u);
    std::size_t checked = 0, validated = 0, invalidInputs = 0, oracleChecked = 0, foreign = 0;
    for (std::size_t n = 0; n < files.size(); ++n) {
        fs::path const& input = files[n];
        SCOPED_TRACE(input.string());
        FileDecoder const decoder(host().manager());
        DecodedFile const original = decoder.decode(input.string(), false);
        if (!original.loaded || !FileDecoder::nothingToConvert(original, input.string()).empty())
            continue;

        fs::path const out = folder / std::to_string(n) / "out.gml";
        fs::create_directories(out.parent_path());
        std::wstring warnings;
        GmlEncodeCommand::Result result;
        ASSERT_NO_THROW(result =
                            GmlEncodeCommand::convert(host().manager(), input.string(),
                                                      out.string(), EncodeOptions(), warnings));
        DecodedFile const again = decoder.decode(out.string(), false);
        ASSERT_TRUE(again.loaded);
        ++checked;

        std::size_t foreignHere = 0;
        auto const given = placeableMeshes(original.geometry, &foreignHere);
        foreign += foreignHere;
        auto const found = placeableMeshes(again.geometry);
        std::multiset<std::wstring> before, after;
        for (auto const& mesh : given)
            before.insert(pathKey(mesh->getName()));
        for (auto const& mesh : found)
            after.insert(pathKey(mesh->getName()));
        for (auto const& key : before)
            EXPECT_EQ(before.count(key), after.count(key)) << kolt::StringUtils::toUTF8(key);
        // What stood below extension elements comes back elsewhere or not at all, so the
        // totals hold for files without such elements.
        double const area = totalArea(given);
        if (foreignHere == 0) {
            EXPECT_EQ(before.size(), after.size());
            EXPECT_TRUE(near(area, totalArea(found), 1e-6)) << area << " vs " << totalArea(found);
        }

        std::set<std::string> const images(result.images.begin(), result.images.end());
        EXPECT_EQ(images.size(), result.images.size()) << "an image was written twice";
        EXPECT_EQ(distinctTextures(original.geometry), result.images.size());
        for (auto const& image : result.images)
            EXPECT_TRUE(fs::is_regular_file(image)) << image;

        bool gap = false;
        if (lint) {
            auto const unexpected = unexpectedSchemaMessages(out, &gap);
            if (!unexpected.empty() && !unexpectedSchemaMessages(input).empty()) {
                ++invalidInputs; // the input breaks the schemas itself
            } else {
                ++validated;
                for (auto const& line : unexpected)
                    ADD_FAILURE() << line;
            }
        }

        // libcitygml has its own reading of some inputs (it skips some elements and drops
        // repeated points), so the written document must read as the input does with it, or
        // with exactly the area that was written.
        if (!gap && foreignHere == 0) {
            OracleResult const read = oracle(input);
            if (read.ok) {
                OracleResult const written = oracle(out);
                EXPECT_TRUE(written.ok) << "libcitygml reads the input but not the output";
                if (written.ok) {
                    ++oracleChecked;
                    EXPECT_TRUE(near(read.area, written.area, 1e-6) ||
                                near(area, written.area, 1e-6))
                        << "libcitygml reads " << written.area << " from the output, " << read.area
                        << " from the input; written were " << area;
                }
            }
        }
    }
    std::printf("round trip: %zu files, %zu validated, %zu with invalid input, %zu read by "
                "libcitygml, %zu meshes below extension elements left out\n",
                checked, validated, invalidInputs, oracleChecked, foreign);
    EXPECT_GT(checked, 50u);
}
