#include "TestData.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

struct ToolRun {
    int code = -1;
    std::string out;
    std::string err;
};

std::string readFile(fs::path const& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

fs::path toolPath() {
    return fs::read_symlink("/proc/self/exe").parent_path() / "gmlcodec";
}

// A scratch folder per test, removed afterwards.
class ToolProcess : public ::testing::Test {
protected:
    void SetUp() override {
        dir = fs::temp_directory_path() /
              ("gmlcodec_test_" + std::to_string(getpid()) + "_" +
               ::testing::UnitTest::GetInstance()->current_test_info()->name());
        fs::remove_all(dir);
        fs::create_directories(dir);
    }
    void TearDown() override { fs::remove_all(dir); }

    ToolRun run(std::string const& arguments) const {
        fs::path const errFile = dir / "stderr.txt";
        std::string const command =
            "'" + toolPath().string() + "' " + arguments + " 2>'" + errFile.string() + "'";
        ToolRun result;
        FILE* pipe = popen(command.c_str(), "r");
        if (pipe == nullptr)
            return result;
        char buffer[4096];
        for (std::size_t n; (n = fread(buffer, 1, sizeof buffer, pipe)) > 0;)
            result.out.append(buffer, n);
        int const status = pclose(pipe);
        result.code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        result.err = readFile(errFile);
        fs::remove(errFile);
        return result;
    }

    std::vector<std::string> files() const {
        std::vector<std::string> names;
        for (auto const& entry : fs::directory_iterator(dir))
            names.push_back(entry.path().filename().string());
        std::sort(names.begin(), names.end());
        return names;
    }

    fs::path dir;
};

std::string example() {
    return "'" + (testsupport::sourceDir() / "examples" / "small_house.gml").string() + "'";
}

TEST_F(ToolProcess, VersionHelpAndUsageErrors) {
    ToolRun r = run("--version");
    EXPECT_EQ(r.code, 0);
    EXPECT_EQ(r.out, "gmlcodec 0.1.0\n");
    r = run("--help");
    EXPECT_EQ(r.code, 0);
    EXPECT_EQ(r.out.rfind("Usage:\n", 0), 0u);

    for (std::string const& args : std::vector<std::string>{
             "", "frobnicate", "info", "info a.gml b.gml", "convert a.gml", "info --bogus a.gml",
             "selfcheck x", "--extensions", "convert " + example() + " out.png"}) {
        SCOPED_TRACE(args);
        r = run(args);
        EXPECT_EQ(r.code, 2);
        EXPECT_EQ(r.err.rfind("gmlcodec: ", 0), 0u) << r.err;
        EXPECT_NE(r.err.find("Usage:"), std::string::npos);
        EXPECT_EQ(r.out, "");
    }
}

TEST_F(ToolProcess, SelfcheckListsTheCodecFactories) {
    ToolRun const r = run("selfcheck");
    EXPECT_EQ(r.code, 0) << r.err;
    EXPECT_NE(r.out.find("decoder  com.morvane.kolt.codecs.CityGMLDecoder  \"CityGML Decoder\"  "
                         ".gml;\n"),
              std::string::npos)
        << r.out;
    EXPECT_EQ(r.out.substr(r.out.size() - 3), "ok\n");
    // The built-in image encoders are the host's, not the codec's.
    EXPECT_EQ(r.out.find("PNGEncoder"), std::string::npos);

    ToolRun const missing = run("selfcheck --extensions '" + dir.string() + "'");
    EXPECT_EQ(missing.code, 1);
    EXPECT_NE(missing.err.find("libcitygml_codec.so"), std::string::npos) << missing.err;
}

TEST_F(ToolProcess, InfoJsonOfTheExample) {
    fs::path const golden = testsupport::sourceDir() / "tests" / "golden" / "cli";
    ToolRun const r = run("info --json --names " + example());
    EXPECT_EQ(r.code, 0) << r.err;
    EXPECT_EQ(r.err, "");
    EXPECT_EQ(r.out, readFile(golden / "info_small_house.json"));
    // Without --names only the first and the last mesh name.
    EXPECT_NE(run("info --json " + example())
                  .out.find(R"(MultiSurface[]\\", "bldg:Building[house]\\bldg:consistsOf)"),
              std::string::npos);

    ToolRun const text = run("info " + example());
    EXPECT_EQ(text.code, 0);
    std::string const path = (testsupport::sourceDir() / "examples" / "small_house.gml").string();
    EXPECT_EQ(text.out,
              "file:              " + path + "\n" + readFile(golden / "info_small_house.txt"));
}

TEST_F(ToolProcess, ConvertTheExampleToObj) {
    ToolRun const r = run("convert " + example() + " '" + (dir / "small_house.obj").string() + "'");
    EXPECT_EQ(r.code, 0) << r.err;
    EXPECT_EQ(r.err, "");
    EXPECT_EQ(r.out, "wrote " + (dir / "small_house.obj").string() +
                         ": 5 meshes, 13 faces, 1 holes, 58 vertices, 3 materials, 1 textures\n");
    EXPECT_EQ(files(), (std::vector<std::string>{"facade.png", "small_house.attributes.json",
                                                 "small_house.mtl", "small_house.obj"}));
    fs::path const golden = testsupport::sourceDir() / "tests" / "golden" / "cli";
    EXPECT_EQ(readFile(dir / "small_house.obj"), readFile(golden / "small_house.obj"));
    EXPECT_EQ(readFile(dir / "small_house.mtl"), readFile(golden / "small_house.mtl"));
    EXPECT_EQ(readFile(dir / "small_house.attributes.json"),
              readFile(golden / "small_house.attributes.json"));
    EXPECT_EQ(readFile(dir / "facade.png"),
              readFile(testsupport::sourceDir() / "examples" / "facade.png"));
}

TEST_F(ToolProcess, TexturesWithOneFileNameGetUniqueCopies) {
    fs::path const png = testsupport::sourceDir() / "examples" / "facade.png";
    for (char const* sub : {"x", "y"}) {
        fs::create_directories(dir / "in" / sub);
        fs::copy_file(png, dir / "in" / sub / "wall.png");
    }
    auto texture = [](std::string const& id, std::string const& url, std::string const& target) {
        return "<app:surfaceDataMember><app:ParameterizedTexture gml:id=\"" + id +
               "\"><app:imageURI>" + url + "</app:imageURI><app:target uri=\"#" + target +
               "\"><app:TexCoordList><app:textureCoordinates ring=\"#" + target +
               "-r\">0 0 1 0 1 1 0 0</app:textureCoordinates></app:TexCoordList></app:target>"
               "</app:ParameterizedTexture></app:surfaceDataMember>";
    };
    auto polygon = [](std::string const& id) {
        return "<gml:surfaceMember><gml:Polygon gml:id=\"" + id +
               "\"><gml:exterior><gml:LinearRing gml:id=\"" + id +
               "-r\"><gml:posList>0 0 0 1 0 0 1 1 0 0 0 0</gml:posList></gml:LinearRing>"
               "</gml:exterior></gml:Polygon></gml:surfaceMember>";
    };
    std::ofstream(dir / "in" / "two.gml")
        << "<core:CityModel xmlns:core=\"http://www.opengis.net/citygml/2.0\" "
           "xmlns:gen=\"http://www.opengis.net/citygml/generics/2.0\" "
           "xmlns:app=\"http://www.opengis.net/citygml/appearance/2.0\" "
           "xmlns:gml=\"http://www.opengis.net/gml\"><core:cityObjectMember>"
           "<gen:GenericCityObject gml:id=\"g\"><gen:lod1Geometry><gml:MultiSurface>"
        << polygon("a") << polygon("b")
        << "</gml:MultiSurface></gen:lod1Geometry></gen:GenericCityObject></core:cityObjectMember>"
           "<app:appearanceMember><app:Appearance>"
        << texture("ta", "x/wall.png", "a") << texture("tb", "y/wall.png", "b")
        << "</app:Appearance></app:appearanceMember></core:CityModel>";
    fs::create_directories(dir / "out");
    ToolRun const r = run("convert '" + (dir / "in" / "two.gml").string() + "' '" +
                          (dir / "out" / "two.obj").string() + "'");
    EXPECT_EQ(r.code, 0) << r.err;
    std::vector<std::string> names;
    for (auto const& entry : fs::directory_iterator(dir / "out"))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (std::vector<std::string>{"two.attributes.json", "two.mtl", "two.obj",
                                               "wall.png", "wall_1.png"}));
    std::string const mtl = readFile(dir / "out" / "two.mtl");
    EXPECT_NE(mtl.find("map_Kd wall.png\n"), std::string::npos) << mtl;
    EXPECT_NE(mtl.find("map_Kd wall_1.png\n"), std::string::npos) << mtl;
    std::string const obj = readFile(dir / "out" / "two.obj");
    EXPECT_NE(obj.find("usemtl material_0\nf 1/1 2/2 3/3\nusemtl material_1\nf 4/4 5/5 6/6\n"),
              std::string::npos)
        << obj;
}

TEST_F(ToolProcess, FilesThatDoNotLoadLeaveNoOutput) {
    std::ofstream(dir / "broken.gml") << "<core:CityModel><unclosed>";
    ToolRun r =
        run("convert '" + (dir / "broken.gml").string() + "' '" + (dir / "out.obj").string() + "'");
    EXPECT_EQ(r.code, 1);
    EXPECT_NE(r.err.find("Failed to load citygml file: "), std::string::npos) << r.err;
    EXPECT_EQ(files(), std::vector<std::string>{"broken.gml"});

    r = run("info --json '" + (dir / "broken.gml").string() + "'");
    EXPECT_EQ(r.code, 1);
    EXPECT_EQ(r.out, "");
    EXPECT_NE(r.err.find("Failed to load citygml file: "), std::string::npos);

    r = run("info '" + (dir / "absent.gml").string() + "'");
    EXPECT_EQ(r.code, 1);
    EXPECT_NE(r.err.find("Cannot open"), std::string::npos) << r.err;

    // An output folder that does not exist: the conversion fails and leaves nothing behind.
    r = run("convert " + example() + " '" + (dir / "no" / "out.obj").string() + "'");
    EXPECT_EQ(r.code, 1);
    EXPECT_NE(r.err.find("cannot write"), std::string::npos) << r.err;
    EXPECT_EQ(files(), std::vector<std::string>{"broken.gml"});
}

TEST_F(ToolProcess, FilesWithoutPolygonsSummariseZeroMeshes) {
    std::ofstream(dir / "empty.gml")
        << "<core:CityModel xmlns:core=\"http://www.opengis.net/citygml/2.0\" "
           "xmlns:bldg=\"http://www.opengis.net/citygml/building/2.0\"><core:cityObjectMember>"
           "<bldg:Building/></core:cityObjectMember></core:CityModel>";
    ToolRun r = run("info '" + (dir / "empty.gml").string() + "'");
    EXPECT_EQ(r.code, 0) << r.err;
    EXPECT_NE(r.out.find("meshes:            0\n"), std::string::npos) << r.out;
    r = run("info --json '" + (dir / "empty.gml").string() + "'");
    EXPECT_EQ(r.out, R"({"meshes": 0, "faces": 0, "holes": 0, "vertices": 0, "materials": 0, )"
                     R"("textures": 0, "spatialReference": null, "attributes": {}, )"
                     R"("warnings": [], "meshNames": [], "version": "2.0", "crs": null, )"
                     R"("featuresByClass": {}, "lods": [], "boundingBox": null})"
                     "\n");
    r = run("convert '" + (dir / "empty.gml").string() + "' '" + (dir / "e.obj").string() + "'");
    EXPECT_EQ(r.code, 0) << r.err;
    EXPECT_EQ(readFile(dir / "e.obj"),
              "# gmlcodec 0.1.0\n# axes: x east, y up, z south (the file's x, z, -y)\n"
              "mtllib e.mtl\n");
}

TEST_F(ToolProcess, TexturedCorpusFileCountsItsTextures) {
    REQUIRE_TESTDATA();
    fs::path const file = testsupport::testDataDir() / "citygml2_textures" / "ogc_appearance" /
                          "Appearance-EPSG25832.gml";
    ToolRun const r = run("info --json '" + file.string() + "'");
    EXPECT_EQ(r.code, 0) << r.err;
    EXPECT_EQ(r.out.rfind("{\"meshes\": ", 0), 0u);
    EXPECT_NE(r.out.find("\"textures\": "), std::string::npos);
    // Textures beside the document resolve, so none is missing from the count.
    EXPECT_EQ(r.out.find("\"textures\": 0,"), std::string::npos) << r.out.substr(0, 200);
}

} // namespace
