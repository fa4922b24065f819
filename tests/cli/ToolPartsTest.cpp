#include "AtomicFile.h"
#include "CommandLine.h"
#include "CoordinateDecimals.h"
#include "CountingStreamBuf.h"
#include "Files.h"
#include "Golden.h"
#include "Json.h"
#include "MeshNameRepair.h"
#include "ProgressBar.h"
#include "ReaderDiagnostics.h"
#include "ScratchDir.h"
#include "TestData.h"
#include "UsageError.h"
#include "XmlSafe.h"
#include "gltf/EarClipping.h"

#include <kolt/AttributeMapBuilder.h>
#include <kolt/StringUtils.h>
#include <koltx/KOLTUtils.h>
#include <koltx/MeshBuilder.h>

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <limits>
#include <numeric>
#include <sstream>
#include <tuple>

namespace fs = std::filesystem;

namespace {

TEST(Json, QuoteEscapesWhatJsonRequires) {
    EXPECT_EQ(Json::quote(""), "\"\"");
    EXPECT_EQ(Json::quote("a\\b[c]\\"), "\"a\\\\b[c]\\\\\"");
    EXPECT_EQ(Json::quote("say \"hi\"\n\t\r\b\f"), "\"say \\\"hi\\\"\\n\\t\\r\\b\\f\"");
    EXPECT_EQ(Json::quote(std::string("\x01\x1f", 2)), "\"\\u0001\\u001f\"");
    EXPECT_EQ(Json::quote("\xC3\xA9t\xC3\xA9 \xE2\x82\xAC /"),
              "\"\xC3\xA9t\xC3\xA9 \xE2\x82\xAC /\"");
}

TEST(Json, NumbersRoundTrip) {
    EXPECT_EQ(Json::number(6), "6");
    EXPECT_EQ(Json::number(1.5), "1.5");
    EXPECT_EQ(Json::number(0.1), "0.1");
    EXPECT_EQ(Json::number(-2.25e-7), "-2.25e-07");
    EXPECT_EQ(std::stod(Json::number(5175882.123456789)), 5175882.123456789);
    EXPECT_EQ(Json::number(std::numeric_limits<double>::infinity()), "null");
    EXPECT_EQ(Json::number(std::nan("")), "null");
}

TEST(CommandLine, ParsesCommandsAndOptionsAnywhere) {
    CommandLine line = CommandLine::parse({"info", "--json", "a.gml"});
    EXPECT_EQ(line.command, "info");
    EXPECT_TRUE(line.json);
    EXPECT_EQ(line.files, std::vector<std::string>{"a.gml"});

    line = CommandLine::parse({"--extensions", "/x", "convert", "a.gml", "b.obj"});
    EXPECT_EQ(line.command, "convert");
    EXPECT_EQ(line.extensionsDir, "/x");
    EXPECT_EQ(line.files, (std::vector<std::string>{"a.gml", "b.obj"}));
    EXPECT_EQ(CommandLine::parse({"info", "--extensions=/y", "--", "--odd.gml"}).files,
              std::vector<std::string>{"--odd.gml"});
    EXPECT_EQ(CommandLine::parse({"info", "x.gml", "--help"}).command, "help");
    EXPECT_EQ(CommandLine::parse({"--version"}).command, "version");
    EXPECT_EQ(CommandLine::parse({"selfcheck"}).command, "selfcheck");

    for (auto const& bad :
         std::vector<std::vector<std::string>>{{},
                                               {"info"},
                                               {"convert", "a"},
                                               {"x"},
                                               {"info", "--no", "a"},
                                               {"--extensions"},
                                               {"--extensions="},
                                               {"selfcheck", "a"},
                                               {"convert", "a", "b", "--lod"},
                                               {"convert", "a", "b", "--lod=-1"},
                                               {"convert", "a", "b", "--lod=two"},
                                               {"convert", "a", "b", "--vertex-precision=0"},
                                               {"convert", "a", "b", "--vertex-precision=2"},
                                               {"convert", "a", "b", "--vertex-precision=nan"},
                                               {"convert", "a", "b", "--base-name="},
                                               {"convert", "a", "b", "--merge-vertices=yes"}}) {
        EXPECT_THROW(CommandLine::parse(bad), UsageError) << bad.back();
    }
}

TEST(CommandLine, MapsEncodeOptionsOntoTheEncodersKeys) {
    CommandLine const line = CommandLine::parse(
        {"convert", "a.obj", "b.gml", "--lod", "2", "--base-name=city", "--srs-name", "EPSG:25832",
         "--vertex-precision=0.0001", "--no-merge-vertices", "--error-fallback"});
    EXPECT_EQ(0.0001, line.encode.vertexPrecision.value_or(0));
    EXPECT_TRUE(line.encode.errorFallback.value_or(false));
    koltx::KOLTUtils::AttributeMapBuilderPtr builder(kolt::AttributeMapBuilder::create());
    line.encode.apply(*builder);
    koltx::KOLTUtils::AttributeMapPtr const map(builder->createAttributeMap());
    EXPECT_EQ(6u, map->getKeyCount());
    EXPECT_EQ(2, map->getInt(L"LOD"));
    EXPECT_STREQ(L"city", map->getString(L"baseName"));
    EXPECT_STREQ(L"EPSG:25832", map->getString(L"srsName"));
    EXPECT_FALSE(map->getBool(L"mergeVertices"));
    EXPECT_TRUE(CommandLine::parse({"convert", "a.gml", "b.gml"}).encode.empty());
}

TEST(CoordinateDecimals, CountsTheDecimalsACoordinateNeeds) {
    for (auto const& [value, limit, decimals] :
         std::vector<std::tuple<double, int, int>>{{458877.0, 10, 0},
                                                   {458877.12, 10, 2},
                                                   {-5438350.125, 10, 3},
                                                   {35.541234567, 10, 9},
                                                   {33.55746194904373, 10, 10},
                                                   {33.55746194904373, 6, 6},
                                                   {std::nan(""), 10, 0},
                                                   {0.1, 10, 1}})
        EXPECT_EQ(decimals, CoordinateDecimals::needed(value, limit)) << value;
    koltx::MeshBuilder builder;
    double const a[3] = {1.5, 2.25, 3.125};
    double const b[3] = {10, 20, 30.0001};
    std::uint32_t const face = builder.addFace();
    for (double const* v : {a, b, a})
        builder.addFaceVertexIndex(face, builder.addVertexCoords(v));
    EXPECT_EQ(4, CoordinateDecimals::needed({builder.createSharedAndReset(nullptr)}));
}

// Paths that would meet in the encoder's tree get ids of their own; the conversion of the same
// names by the tool process shows that every face then stays.
TEST(MeshNameRepair, KeepsEveryFaceOfPathsThatWouldMeet) {
    std::vector<std::wstring> given;
    std::istringstream lines(testsupport::readFile(testsupport::dataFile("cli/mesh_names.txt")));
    for (std::string line; std::getline(lines, line);)
        given.push_back(kolt::StringUtils::toUTF16(line));
    std::vector<std::wstring> names = given;
    EXPECT_EQ(7u, MeshNameRepair::repair(names));
    std::string text;
    for (std::size_t i = 0; i < names.size(); ++i)
        text += kolt::StringUtils::toUTF8(given[i]) + "\n  " + kolt::StringUtils::toUTF8(names[i]) +
                "\n";
    EXPECT_TRUE(testsupport::matchesGolden("cli/mesh_name_repair.txt", text));
    EXPECT_EQ(0u, MeshNameRepair::repair(names));

    // A geometry that two features share by reference gets a second id for its second copy.
    std::vector<std::wstring> shared = {
        L"bldg:Building[a]\\bldg:lod2MultiSurface[]\\gml:MultiSurface[s]\\",
        L"bldg:Building[b]\\bldg:lod2MultiSurface[]\\gml:MultiSurface[s]\\"};
    EXPECT_EQ(1u, MeshNameRepair::repair(shared));
    EXPECT_EQ(L"bldg:Building[b]\\bldg:lod2MultiSurface[]\\gml:MultiSurface[s_gmlcodec_1]\\",
              shared[1]);
}

TEST(CountingStreamBuf, CountsEveryByteAndReportsPerChunk) {
    std::string const text(10000, 'x');
    std::stringbuf source(text + "end");
    std::vector<uint64_t> reports;
    CountingStreamBuf counting(
        source, [&](uint64_t n) { reports.push_back(n); }, 4096);
    std::istream in(&counting);
    std::string all((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    EXPECT_EQ(all, text + "end");
    EXPECT_EQ(counting.bytesRead(), 10003u);
    EXPECT_EQ(reports, (std::vector<uint64_t>{4096, 8192, 10003}));
}

TEST(ProgressBar, RedrawsOnlyOnVisibleChange) {
    std::ostringstream out;
    {
        ProgressBar bar(out, "decoding", 200ull << 20, 10);
        bar.update(0);
        bar.update(1); // the same per mille: no redraw
        bar.update(100ull << 20);
        bar.finish();
        bar.update(5); // ignored after finish
    }
    EXPECT_EQ(out.str(), "\rdecoding [          ]   0.0% 0/200 MB"
                         "\rdecoding [#####     ]  50.0% 100/200 MB"
                         "\rdecoding [##########] 100.0% 200/200 MB\n");
}

TEST(AtomicFile, AppearsOnlyWhenCommitted) {
    testsupport::ScratchDir scratch("atomic");
    fs::path const dir = scratch.path();
    {
        AtomicFile file(dir / "a.txt");
        file.stream() << "half";
        EXPECT_FALSE(fs::exists(dir / "a.txt"));
    }
    EXPECT_TRUE(fs::is_empty(dir));
    {
        AtomicFile file(dir / "b.txt");
        file.stream() << "whole";
        file.commit();
    }
    EXPECT_EQ(std::distance(fs::directory_iterator(dir), fs::directory_iterator()), 1);
    EXPECT_EQ(fs::file_size(dir / "b.txt"), 5u);
    EXPECT_THROW(AtomicFile(dir / "missing" / "c.txt"), std::runtime_error);
}

// Clipped ears keep the polygon's winding, so they cover it exactly; crossings are refused.
TEST(EarClipping, CoversConcaveFacesAndRefusesCrossings) {
    struct Row {
        std::vector<double> xyz;
        bool clipped;
    } const rows[] = {
        {{0, 0, 0, 2, 0, 0, 2, 1, 0, 1, 1, 0, 1, 2, 0, 0, 2, 0}, true}, // L, upwards
        {{0, 5, 0, 0, 5, 2, 1, 5, 2, 1, 5, 1, 2, 5, 1, 2, 5, 0}, true}, // L, upright
        {{0, 0, 0, 3, 0, 0, 3, 2, 0, 2, 2, 0, 2, 1, 0, 1, 1, 0, 1, 2, 0, 0, 2, 0}, true}, // U
        {{0, 0, 0, 1, 1, 0, 1, 0, 0, 0, 1, 0}, false},                                    // bow tie
        {{0, 0, 0, 1, 0, 0, 2, 0, 0}, false},                                             // a line
    };
    auto const newell = [](double const* xyz, std::vector<uint32_t> const& v) {
        std::array<double, 3> n{};
        for (std::size_t k = 0; k < v.size(); ++k) {
            double const *p = xyz + v[k] * 3, *q = xyz + v[(k + 1) % v.size()] * 3;
            n = {n[0] + (p[1] - q[1]) * (p[2] + q[2]), n[1] + (p[2] - q[2]) * (p[0] + q[0]),
                 n[2] + (p[0] - q[0]) * (p[1] + q[1])};
        }
        return n;
    };
    for (auto const& row : rows) {
        std::vector<uint32_t> index(row.xyz.size() / 3), corners;
        std::iota(index.begin(), index.end(), 0u);
        ASSERT_EQ(EarClipping::triangulate(row.xyz.data(), index.data(),
                                           static_cast<uint32_t>(index.size()), corners),
                  row.clipped);
        if (!row.clipped)
            continue;
        EXPECT_EQ(corners.size(), 3 * (index.size() - 2));
        auto const whole = newell(row.xyz.data(), index);
        double const area2 = whole[0] * whole[0] + whole[1] * whole[1] + whole[2] * whole[2];
        // All triangles turning the polygon's way tile it exactly: the boundaries cancel.
        for (std::size_t t = 0; t < corners.size(); t += 3) {
            auto const n = newell(row.xyz.data(), {corners[t], corners[t + 1], corners[t + 2]});
            double const along = (n[0] * whole[0] + n[1] * whole[1] + n[2] * whole[2]) / area2;
            EXPECT_GT(along, 0);
        }
    }
}

TEST(XmlSafe, EveryStringBecomesWellFormed) {
    EXPECT_EQ(XmlSafe::text(L"Smith & Sons <\"'>\n\t"),
              L"Smith &amp; Sons &lt;&quot;&apos;&gt;&#10;&#9;");
    EXPECT_EQ(XmlSafe::text(std::wstring{L'a', 0x01, L'b', 0xFFFE, L'c', 0xD800}),
              (std::wstring{L'a', 0xFFFD, L'b', 0xFFFD, L'c', 0xFFFD}));
    EXPECT_EQ(XmlSafe::attributeName(L"gml:name"), L"gml:name");
    EXPECT_EQ(XmlSafe::attributeName(L"foo:bar&"), L"foo_bar&amp;");
    EXPECT_EQ(XmlSafe::attributeName(L"gml:1x"), L"gml_1x");
    EXPECT_EQ(XmlSafe::name(L"bldg:my tag<"), L"bldg:my_tag_");
    EXPECT_EQ(XmlSafe::name(L"1st"), L"_1st");
}

TEST(ReaderDiagnostics, DropsAreCountedByKindWithLineAndId) {
    ReaderDiagnostics reader;
    using Level = citygml::CityGMLLogger::LOGLEVEL;
    reader.log(Level::LL_WARNING, "ring 'r1' dropped: fewer than 4 positions", nullptr, 12);
    reader.log(Level::LL_WARNING, "polygon dropped: no usable exterior ring", nullptr, 14);
    reader.log(Level::LL_WARNING, "material 'm' has an unreadable colour", nullptr, 20);
    reader.log(Level::LL_INFO, "ring 'r2' dropped: not heard below warnings", nullptr, 30);
    EXPECT_EQ(reader.count(), 3u);
    EXPECT_EQ(reader.entries()[0].id, "r1");
    EXPECT_EQ(reader.entries()[1].id, "");
    EXPECT_EQ(reader.lines()[0], "line 12: ring 'r1' dropped: fewer than 4 positions");
    EXPECT_EQ(
        reader.summary(2),
        "the reader reported 3 problems (1 other, 1 polygon dropped, 1 ring dropped), the "
        "first 2:\n  line 12: ring 'r1' dropped: fewer than 4 positions\n"
        "  line 14: polygon dropped: no usable exterior ring\n  (--verbose lists them all)\n");
}

} // namespace
