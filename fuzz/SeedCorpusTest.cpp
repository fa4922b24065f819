// Runs the fuzz entry over the checked-in seeds and the shared test files, so every ordinary
// build exercises what the fuzzer starts from.
#include "TestData.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size);

namespace {

int runDirectory(std::filesystem::path const& dir) {
    int count = 0;
    for (auto const& entry : std::filesystem::recursive_directory_iterator(dir)) {
        if (!entry.is_regular_file())
            continue;
        auto ext = entry.path().extension().string();
        if (ext == ".xsd" || ext == ".md" || ext == ".jpg" || ext == ".png" || ext == ".jpeg")
            continue;
        std::ifstream in(entry.path(), std::ios::binary);
        std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
        SCOPED_TRACE(entry.path().string());
        EXPECT_EQ(LLVMFuzzerTestOneInput(reinterpret_cast<std::uint8_t const*>(bytes.data()),
                                         bytes.size()),
                  0);
        ++count;
    }
    return count;
}

} // namespace

TEST(SeedCorpus, CheckedInSeedsRunClean) {
    EXPECT_GE(runDirectory(std::filesystem::path(KOLT_FUZZ_CORPUS_DIR)), 10);
}

TEST(SeedCorpus, SharedTestFilesRunClean) {
    REQUIRE_TESTDATA();
    EXPECT_GT(runDirectory(testsupport::testDataDir()), 100);
}
