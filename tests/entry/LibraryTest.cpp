#include <Process.h>
#include <TestData.h>

#include <koltx/ExtensionManager.h>
#include <koltx/Geometry.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

namespace fs = std::filesystem;

namespace {

fs::path libraryPath() {
    return fs::read_symlink("/proc/self/exe").parent_path() / "libcitygml_codec.so";
}

TEST(CodecLibrary, ExportsExactlyTheFourEntryPoints) {
    ASSERT_TRUE(fs::exists(libraryPath()));
    std::istringstream lines(testsupport::runCommand("nm -D --defined-only " +
                                                     testsupport::quote(libraryPath().string()))
                                 .out);
    std::set<std::string> names;
    for (std::string address, type, name; lines >> address >> type >> name;)
        names.insert(name);
    EXPECT_EQ(names, (std::set<std::string>{"getVersionMajor", "getVersionMinor",
                                            "registerExtensionFactories",
                                            "unregisterExtensionFactories"}));
}

TEST(CodecLibrary, LoadsIntoAHostAndDecodes) {
    koltx::ExtensionManager manager;
    manager.loadExtensionLibrary(libraryPath().string());
    auto const factories = manager.getDecoderFactoriesForURI(L"city.gml");
    ASSERT_EQ(factories.size(), 1u);
    EXPECT_EQ(factories[0]->getID(), L"com.morvane.kolt.codecs.CityGMLDecoder");

    auto const decoder = manager.createDecoderForURI(L"city.gml");
    fs::path const example = testsupport::sourceDir() / "examples" / "small_house.gml";
    std::ifstream stream(example, std::ios::binary);
    std::vector<std::shared_ptr<koltx::Content>> results;
    std::wstring warnings;
    decoder->decode(results, stream, nullptr, example.wstring(), nullptr, warnings);
    EXPECT_EQ(warnings, L"");
    ASSERT_EQ(results.size(), 1u);
    auto const geometry = std::dynamic_pointer_cast<koltx::Geometry>(results[0]);
    ASSERT_TRUE(geometry);
    EXPECT_EQ(geometry->getMeshes().size(), 5u);
}

} // namespace
