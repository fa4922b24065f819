#pragma once

#include <filesystem>
#include <string>

#include <gtest/gtest.h>

namespace testsupport {

// The shared CityGML corpus sits beside the project; a fresh clone may not have it.
inline std::filesystem::path testDataDir() {
    return std::filesystem::path(KOLT_TESTDATA_DIR);
}

inline bool haveTestData() {
    return std::filesystem::is_directory(testDataDir());
}

inline std::filesystem::path sourceDir() {
    return std::filesystem::path(KOLT_SOURCE_DIR);
}

// Inputs checked in with the tests: tests/data/<component>/...
inline std::filesystem::path dataFile(std::string const& relative) {
    return sourceDir() / "tests" / "data" / relative;
}

} // namespace testsupport

// Skips the current test with a message when the shared corpus is absent.
#define REQUIRE_TESTDATA()                                                                         \
    do {                                                                                           \
        if (!testsupport::haveTestData())                                                          \
            GTEST_SKIP() << "shared test data not found at " << testsupport::testDataDir()         \
                         << "; skipping";                                                          \
    } while (0)
