#include <Process.h>
#include <TestData.h>

#include <gtest/gtest.h>

#include <filesystem>
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

} // namespace
