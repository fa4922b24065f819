// The encoding half of gmlcodec, in-process: option parsing, the name repair that keeps every
// face, the precision choice, the OBJ reader and whole conversions with their failures.
#include "CommandLine.h"
#include "CoordinateDecimals.h"
#include "EncodeOptions.h"
#include "GmlEncodeCommand.h"
#include "MeshNameRepair.h"
#include "ObjReader.h"
#include "ToolTestHost.h"
#include "UsageError.h"

#include <kolt/AttributeMapBuilder.h>
#include <kolt/Cache.h>
#include <kolt/EncoderInfo.h>
#include <kolt/StringUtils.h>
#include <koltx/Encoder.h>
#include <koltx/ExtensionManager.h>
#include <koltx/FileOutputCallbacks.h>
#include <koltx/GenerateContext.h>
#include <koltx/GeometryBuilder.h>
#include <koltx/InitialShape.h>
#include <koltx/KOLTUtils.h>
#include <koltx/Material.h>
#include <koltx/MemoryOutputCallbacks.h>
#include <koltx/Mesh.h>
#include <koltx/MeshBuilder.h>
#include <koltx/Texture.h>

#include <Files.h>
#include <Golden.h>
#include <ScratchDir.h>
#include <TestData.h>
#include <gtest/gtest.h>

#include <unistd.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <regex>
#include <sstream>

namespace {

namespace fs = std::filesystem;

using testsupport::countOf;
using testsupport::filesIn;
using testsupport::readFile;
using testsupport::writeFile;

class ToolEncode : public ::testing::Test {
protected:
    void SetUp() override {
        fs::create_directories(dir / "in");
        fs::create_directories(dir / "out");
    }

    int convert(std::string const& input, std::string const& output,
                EncodeOptions const& options = {}) {
        std::ostringstream outText, errText;
        int const code = GmlEncodeCommand::run(host(), input, output, options, outText, errText);
        out = outText.str();
        err = errText.str();
        return code;
    }

    // A 2x2 RGB image through the host's own PNG encoder.
    void writePng(fs::path const& path) {
        auto texture = std::make_shared<koltx::Texture>(
            koltx::URI::create(L"file:///x.png"), 2, 2, koltx::Texture::FORMAT_RGB8,
            std::vector<uint8_t>{255, 0, 0, 0, 255, 0, 0, 0, 255, 255, 255, 255});
        koltx::KOLTUtils::AttributeMapBuilderPtr b(kolt::AttributeMapBuilder::create());
        b->setString(L"textureName", kolt::StringUtils::toUTF16(path.filename().string()).c_str());
        koltx::KOLTUtils::AttributeMapPtr const options(b->createAttributeMap());
        koltx::FileOutputCallbacks files(path.parent_path().string());
        auto encoder = koltx::ExtensionManager::instance()->createEncoder(
            L"com.morvane.kolt.codecs.PNGEncoder", options.get(), &files);
        encoder->encode({texture});
    }

    testsupport::ScratchDir const dir{"encoder_tool"};
    std::string out, err;
};

std::shared_ptr<koltx::Mesh> square(std::wstring const& name) {
    koltx::MeshBuilder builder;
    builder.setName(name);
    std::uint32_t const face = builder.addFace();
    double const corners[4][3] = {{0, 0, 0}, {1, 0, 0}, {1, 0, 1}, {0, 0, 1}};
    for (auto const& c : corners)
        builder.addFaceVertexIndex(face, builder.addVertexCoords(c));
    return builder.createSharedAndReset(nullptr);
}

// Polygons in the document that the codec writes for meshes of these names, one face each.
std::size_t polygonsWritten(std::vector<std::wstring> const& names) {
    koltx::GeometryBuilder geometry;
    for (auto const& name : names)
        geometry.addMesh(square(name));
    auto const shape = std::make_shared<koltx::InitialShape>(
        L"s", nullptr,
        std::vector<std::shared_ptr<koltx::Shape>>{
            std::make_shared<koltx::Shape>(geometry.createSharedAndReset(nullptr))});
    koltx::MemoryOutputCallbacks outputs;
    auto const info = koltx::KOLTUtils::adopt(
        host().manager().createEncoderInfo(L"com.morvane.kolt.codecs.CityGMLEncoder"));
    kolt::AttributeMap const* options = nullptr;
    info->createValidatedOptions(nullptr, &options, nullptr);
    koltx::KOLTUtils::AttributeMapPtr const owned(options);
    auto encoder = host().manager().createEncoder(L"com.morvane.kolt.codecs.CityGMLEncoder",
                                                  options, &outputs);
    koltx::GenerateContext context({shape}, nullptr, &outputs);
    encoder->init(context);
    encoder->encode(context, 0);
    encoder->finish(context);
    return countOf(outputs.getText(L"gml_default_name.gml"), "<gml:Polygon ");
}

} // namespace

TEST(EncodeOptionsParsing, MapsOptionsOntoTheEncodersKeys) {
    CommandLine const line = CommandLine::parse(
        {"convert", "a.obj", "b.gml", "--lod", "2", "--base-name=city", "--srs-name", "EPSG:25832",
         "--vertex-precision=0.0001", "--no-merge-vertices", "--error-fallback"});
    EXPECT_EQ(2u, line.files.size());
    EXPECT_EQ(2, line.encode.lod.value_or(-1));
    EXPECT_EQ("city", line.encode.baseName.value_or(""));
    EXPECT_EQ("EPSG:25832", line.encode.srsName.value_or(""));
    EXPECT_EQ(0.0001, line.encode.vertexPrecision.value_or(0));
    EXPECT_FALSE(line.encode.mergeVertices.value_or(true));
    EXPECT_TRUE(line.encode.errorFallback.value_or(false));

    koltx::KOLTUtils::AttributeMapBuilderPtr builder(kolt::AttributeMapBuilder::create());
    line.encode.apply(*builder);
    koltx::KOLTUtils::AttributeMapPtr const map(builder->createAttributeMap());
    EXPECT_EQ(6u, map->getKeyCount());
    EXPECT_EQ(2, map->getInt(L"LOD"));
    EXPECT_STREQ(L"city", map->getString(L"baseName"));
    EXPECT_FALSE(map->getBool(L"mergeVertices"));

    EXPECT_TRUE(CommandLine::parse({"convert", "a.gml", "b.gml"}).encode.empty());
    for (auto const& bad :
         std::vector<std::vector<std::string>>{{"convert", "a", "b", "--lod"},
                                               {"convert", "a", "b", "--lod", "two"},
                                               {"convert", "a", "b", "--lod=-1"},
                                               {"convert", "a", "b", "--vertex-precision", "0"},
                                               {"convert", "a", "b", "--vertex-precision", "2"},
                                               {"convert", "a", "b", "--vertex-precision", "nan"},
                                               {"convert", "a", "b", "--base-name="},
                                               {"convert", "a", "b", "--merge-vertices=yes"},
                                               {"convert", "a", "b", "--frobnicate"}})
        EXPECT_THROW(CommandLine::parse(bad), UsageError) << bad.back();
    EXPECT_NE(std::string::npos, CommandLine::usage().find("--vertex-precision"));
}

TEST(CoordinateDecimalsTest, CountsTheDecimalsACoordinateNeeds) {
    EXPECT_EQ(0, CoordinateDecimals::needed(458877.0));
    EXPECT_EQ(2, CoordinateDecimals::needed(458877.12));
    EXPECT_EQ(3, CoordinateDecimals::needed(-5438350.125));
    EXPECT_EQ(9, CoordinateDecimals::needed(35.541234567));
    EXPECT_EQ(10, CoordinateDecimals::needed(33.55746194904373));
    EXPECT_EQ(6, CoordinateDecimals::needed(33.55746194904373, 6));
    EXPECT_EQ(0, CoordinateDecimals::needed(std::nan("")));
    EXPECT_EQ(1, CoordinateDecimals::needed(0.1));

    koltx::MeshBuilder builder;
    double const a[3] = {1.5, 2.25, 3.125};
    double const b[3] = {10, 20, 30.0001};
    builder.addVertexCoords(a);
    builder.addVertexCoords(b);
    std::uint32_t const face = builder.addFace();
    for (std::uint32_t v : {0u, 1u, 0u})
        builder.addFaceVertexIndex(face, v);
    EXPECT_EQ(4, CoordinateDecimals::needed({builder.createSharedAndReset(nullptr)}));
}

TEST(MeshNameRepairTest, KeepsEveryFaceOfPathsThatWouldMeet) {
    std::wstring const building = L"bldg:Building[b1]\\";
    std::wstring const wall = building + L"bldg:boundedBy[]\\bldg:WallSurface[]\\bldg:"
                                         L"lod2MultiSurface[]\\gml:MultiSurface[]\\";
    std::wstring const ground = building + L"bldg:boundedBy[]\\bldg:GroundSurface[]\\bldg:"
                                           L"lod2MultiSurface[]\\gml:MultiSurface[]\\";
    std::wstring const solid =
        building + L"bldg:lod2Solid[]\\gml:Solid[]\\gml:CompositeSurface[]\\";
    std::wstring const solidInner = building + L"bldg:lod2Solid[]\\gml:Solid[]\\gml:"
                                               L"CompositeSurface[]\\gml:CompositeSurface[f]\\";
    std::vector<std::wstring> const given = {ground,
                                             wall,
                                             wall,
                                             solid,
                                             solidInner,
                                             L"gen:GenericCityObject[]\\gen:lod1Geometry[]\\gml:"
                                             L"MultiSurface[]\\",
                                             L"gen:GenericCityObject[]\\gen:lod1Geometry[]\\gml:"
                                             L"MultiSurface[]\\",
                                             L"gen:GenericCityObject[g]\\gen:lod2Geometry[]\\gml:"
                                             L"CompositeSolid[cs]\\gml:Solid[]\\",
                                             L"gen:GenericCityObject[g]\\gen:lod2Geometry[]\\gml:"
                                             L"CompositeSolid[cs]\\gml:Solid[]\\",
                                             L"plain name",
                                             L"gml:lod2MultiSurface\\gml:multisurface"};
    // Without the repair the encoder drops most of these.
    EXPECT_LT(polygonsWritten(given), given.size() - 1);

    std::vector<std::wstring> names = given;
    EXPECT_EQ(7u, MeshNameRepair::repair(names));
    std::string text;
    for (std::size_t i = 0; i < names.size(); ++i)
        text += kolt::StringUtils::toUTF8(given[i]) + "\n  " + kolt::StringUtils::toUTF8(names[i]) +
                "\n";
    // The second and third surface need property elements of their own; a property of another
    // tag that met the first one gets an id its second mesh shares; a repeated feature without
    // id and a repeated member of an aggregate become their own; an unclosed step is closed.
    EXPECT_TRUE(testsupport::matchesGolden("encoder/mesh_name_repair.txt", text));
    EXPECT_EQ(given.size(), polygonsWritten(names));
    // A second repair finds nothing more to do.
    EXPECT_EQ(0u, MeshNameRepair::repair(names));

    // A geometry that two features share by reference gets a second id for its second copy.
    std::vector<std::wstring> shared = {
        L"bldg:Building[a]\\bldg:lod2MultiSurface[]\\gml:MultiSurface[s]\\",
        L"bldg:Building[b]\\bldg:lod2MultiSurface[]\\gml:MultiSurface[s]\\"};
    EXPECT_EQ(1u, MeshNameRepair::repair(shared));
    EXPECT_EQ(L"bldg:Building[b]\\bldg:lod2MultiSurface[]\\gml:MultiSurface[s_gmlcodec_1]\\",
              shared[1]);
    auto const copy = koltx::MeshBuilder::renamed(square(L"a"), L"b");
    EXPECT_EQ(L"b", copy->getName());
    EXPECT_EQ(4u, copy->getVertexCount());
    EXPECT_EQ(1u, copy->getFaceCount());
    // Arrays are taken from a mesh held once and copied from a shared one.
    auto held = square(L"a"), kept = held;
    EXPECT_EQ(12u, koltx::MeshBuilder::takeArrays(held).coords.size());
    EXPECT_TRUE(!held && kept->getVertexCount() == 4u);
    EXPECT_EQ(12u, koltx::MeshBuilder::takeArrays(kept).coords.size());
}

TEST_F(ToolEncode, ObjWithMaterialsAndTextureBecomesCityGML) {
    writePng(dir / "in" / "brick.png");
    writeFile(dir / "in" / "house.mtl", "newmtl red\nKd 1 0 0\nNs 64\nd 0.5\n"
                                        "newmtl brick\nKd 1 1 1\nmap_Kd brick.png\n");
    writeFile(dir / "in" / "house.obj",
              "mtllib house.mtl\n"
              "v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\nv 0 0 1\n"
              "vt 0 0\nvt 1 0\nvt 1 1\nvt 0 1\n"
              "o bldg:Building[b1]\\bldg:lod2MultiSurface[]\\gml:MultiSurface[walls]\\\n"
              "usemtl brick\nf 1/1 2/2 3/3 4/4\nusemtl red\nf 1 2 5\n"
              "g loose\nf 2 3 5\n");
    ASSERT_EQ(0, convert((dir / "in" / "house.obj").string(), (dir / "out" / "city.gml").string()))
        << err;
    EXPECT_EQ((std::vector<std::string>{"brick.png", "city.gml"}), filesIn(dir / "out"));
    std::string const text = readFile(dir / "out" / "city.gml");
    // The object named by a path finds its building; the group without one a default place.
    EXPECT_NE(std::string::npos, text.find("<bldg:Building>"));
    EXPECT_NE(std::string::npos, text.find("<gml:MultiSurface gml:id=\"walls\">"));
    EXPECT_NE(std::string::npos, text.find("<con:OtherConstruction>"));
    EXPECT_EQ(3u, countOf(text, "<gml:Polygon "));
    EXPECT_NE(std::string::npos, text.find("<app:imageURI>brick.png</app:imageURI>"));
    EXPECT_NE(std::string::npos, text.find("<app:diffuseColor>1 0 0</app:diffuseColor>"));
    EXPECT_NE(std::string::npos, text.find("<app:transparency>0.500000</app:transparency>"));
    EXPECT_NE(std::string::npos, out.find("2 meshes, 3 faces, 1 texture images"));
}

TEST_F(ToolEncode, ObjReaderGivesOneMeshPerObjectOrGroup) {
    writeFile(dir / "in" / "two.obj", "v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\n"
                                      "o first\nf 1 2 3 4\nf 1 2 3\ng second\nf 4 3 2\n"
                                      "l 1 2\n");
    std::wstring warnings;
    auto const cache = koltx::KOLTUtils::share(kolt::Cache::create());
    auto const meshes = ObjReader::read((dir / "in" / "two.obj").string(), cache.get(), warnings);
    ASSERT_EQ(2u, meshes.size());
    EXPECT_EQ(L"first", meshes[0]->getName());
    EXPECT_EQ(2u, meshes[0]->getFaceCount());
    EXPECT_EQ(4u, meshes[0]->getFaceVertexCount(0));
    EXPECT_EQ(4u, meshes[0]->getVertexCount());
    EXPECT_EQ(L"second", meshes[1]->getName());
    EXPECT_EQ(3u, meshes[1]->getVertexCount());
    EXPECT_EQ(1u, meshes[1]->getMaterials().size());

    writeFile(dir / "in" / "bad.obj", "v 0 0 0\nf 1 2 3\n");
    EXPECT_THROW(ObjReader::read((dir / "in" / "bad.obj").string(), cache.get(), warnings),
                 std::runtime_error);
    EXPECT_THROW(ObjReader::read((dir / "in" / "none.obj").string(), cache.get(), warnings),
                 std::runtime_error);
}

TEST_F(ToolEncode, GeographicCityGMLKeepsItsCoordinatesAndReference) {
    REQUIRE_TESTDATA();
    fs::path const input =
        testsupport::testDataDir() / "plateau_japan" / "50302469_bldg_6697_op.gml";
    ASSERT_EQ(0, convert(input.string(), (dir / "out" / "plateau.gml").string())) << err;
    EXPECT_NE(std::string::npos, err.find("note: vertex precision 1e-10 keeps the input's"));
    std::string const text = readFile(dir / "out" / "plateau.gml");
    EXPECT_NE(std::string::npos,
              text.find("srsName=\"http://www.opengis.net/def/crs/EPSG/0/6697\""));
    // Coordinates of the input stand in the output to the tenth decimal.
    std::regex const coordinate("33\\.557461949[0-9] ");
    EXPECT_TRUE(std::regex_search(text, coordinate));
    // The first feature's attributes come back as attributes.
    EXPECT_NE(std::string::npos, text.find("name=\"measuredHeight\""));

    // A precision the user gives is taken as it is, and so is a reference system.
    EncodeOptions options;
    options.vertexPrecision = 0.001;
    options.srsName = "EPSG:4326";
    ASSERT_EQ(0, convert(input.string(), (dir / "out" / "coarse.gml").string(), options));
    std::string const coarse = readFile(dir / "out" / "coarse.gml");
    EXPECT_NE(std::string::npos, coarse.find("srsName=\"EPSG:4326\""));
    EXPECT_FALSE(std::regex_search(coarse, coordinate));
    EXPECT_EQ(std::string::npos, err.find("note: vertex precision"));
}

TEST_F(ToolEncode, BaseNameAndLevelOfDetail) {
    REQUIRE_TESTDATA();
    fs::path const input =
        testsupport::testDataDir() / "citygml2_lod2_buildings" / "Building_LOD2-EPSG25832.gml";
    EncodeOptions options;
    options.baseName = "my city";
    options.lod = 1;
    ASSERT_EQ(0, convert(input.string(), (dir / "out" / "ignored.gml").string(), options)) << err;
    // The encoder makes the name a file name; the document stands in OUT's folder.
    EXPECT_EQ((std::vector<std::string>{"my_city.gml"}), filesIn(dir / "out"));
    std::string const text = readFile(dir / "out" / "my_city.gml");
    EXPECT_EQ(std::string::npos, text.find("lod2"));
    EXPECT_NE(std::string::npos, text.find("dem:ReliefFeature"));
}

TEST_F(ToolEncode, FailuresLeaveNothingBehind) {
    REQUIRE_TESTDATA();
    // Unreadable input.
    EXPECT_EQ(1, convert((dir / "in" / "missing.gml").string(), (dir / "out" / "a.gml").string()));
    EXPECT_NE(std::string::npos, err.find("gmlcodec: cannot read"));
    EXPECT_EQ(1, convert((testsupport::testDataDir() / "awkward_inputs" /
                          "NOT_WELLFORMED_plateau_Issue138-B.gml")
                             .string(),
                         (dir / "out" / "a.gml").string()));
    EXPECT_NE(std::string::npos, err.find("line 202"));
    // No output folder.
    writeFile(dir / "in" / "t.obj", "v 0 0 0\nv 1 0 0\nv 1 1 0\nf 1 2 3\n");
    EXPECT_EQ(1, convert((dir / "in" / "t.obj").string(), (dir / "nowhere" / "a.gml").string()));
    EXPECT_NE(std::string::npos, err.find("does not exist"));
    // An output folder that cannot be written (root may write anywhere).
    if (::geteuid() != 0) {
        fs::create_directories(dir / "locked");
        fs::permissions(dir / "locked", fs::perms::owner_read | fs::perms::owner_exec);
        EXPECT_EQ(1, convert((dir / "in" / "t.obj").string(), (dir / "locked" / "a.gml").string()));
        EXPECT_NE(std::string::npos, err.find("Permission denied"));
        fs::permissions(dir / "locked", fs::perms::owner_all);
    }
    // The document cannot be put in place after its texture was written: the texture goes too.
    writePng(dir / "in" / "t.png");
    writeFile(dir / "in" / "t.mtl", "newmtl t\nmap_Kd t.png\n");
    writeFile(dir / "in" / "tex.obj",
              "mtllib t.mtl\nv 0 0 0\nv 1 0 0\nv 1 1 0\nvt 0 0\nvt 1 0\nvt 1 1\n"
              "usemtl t\nf 1/1 2/2 3/3\n");
    // Beside its input, the texture image never replaces the input's own picture.
    auto const stamp = fs::last_write_time(dir / "in" / "t.png");
    EXPECT_EQ(0, convert((dir / "in" / "tex.obj").string(), (dir / "in" / "x.gml").string()));
    EXPECT_EQ(stamp, fs::last_write_time(dir / "in" / "t.png"));
    fs::create_directories(dir / "out" / "blocked.gml" / "inside");
    EncodeOptions options;
    options.baseName = "blocked";
    EXPECT_EQ(
        1, convert((dir / "in" / "tex.obj").string(), (dir / "out" / "x.gml").string(), options));
    EXPECT_EQ((std::vector<std::string>{"blocked.gml"}), filesIn(dir / "out"));
    EXPECT_TRUE(fs::is_directory(dir / "out" / "blocked.gml"));
}
