// Runs a fuzz entry over its checked-in seeds (and, where the target asks for it, over the
// shared test files), so every ordinary build exercises what the fuzzer starts from.
#include "TestData.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size);
extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) __attribute__((weak));

namespace {

int runDirectory(std::filesystem::path const& dir) {
    if (LLVMFuzzerInitialize != nullptr)
        LLVMFuzzerInitialize(nullptr, nullptr);
    int count = 0;
    for (auto const& entry : std::filesystem::recursive_directory_iterator(dir)) {
        auto const ext = entry.path().extension().string();
        if (!entry.is_regular_file() || ext == ".xsd" || ext == ".md" || ext == ".jpg" ||
            ext == ".png" || ext == ".jpeg")
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

TEST(KOLT_FUZZ_SUITE, CheckedInSeedsRunClean) {
    EXPECT_GE(runDirectory(std::filesystem::path(KOLT_FUZZ_CORPUS_DIR)), 5);
}

#if KOLT_FUZZ_SHARED_TESTDATA
TEST(KOLT_FUZZ_SUITE, SharedTestFilesRunClean) {
    REQUIRE_TESTDATA();
    EXPECT_GT(runDirectory(testsupport::testDataDir()), 100);
}
#endif
