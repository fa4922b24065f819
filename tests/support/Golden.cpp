#include "Golden.h"

#include "Files.h"
#include "TestData.h"

#include <cstdlib>
#include <regex>
#include <sstream>

namespace testsupport {

std::string maskIdentifiers(std::string const& text) {
    static std::regex const identifier(identifierPattern);
    return std::regex_replace(text, identifier, "ID");
}

std::filesystem::path goldenFile(std::string const& name) {
    return sourceDir() / "tests" / "golden" / name;
}

::testing::AssertionResult matchesGolden(std::string const& name, std::string const& actual,
                                         bool mask) {
    std::string const masked = mask ? maskIdentifiers(actual) : actual;
    auto const file = goldenFile(name);
    char const* update = std::getenv("KOLT_UPDATE_GOLDEN");
    if (update != nullptr && std::string(update) == "1") {
        writeFile(file, masked);
        return ::testing::AssertionSuccess() << "rewrote " << file;
    }
    if (!std::filesystem::exists(file))
        return ::testing::AssertionFailure()
               << file << " is missing; run with KOLT_UPDATE_GOLDEN=1 to write it";
    std::string const expected = readFile(file);
    if (expected == masked)
        return ::testing::AssertionSuccess();
    // Name the first line that differs; whole documents are too long to print.
    std::istringstream want(expected), got(masked);
    std::string wantLine, gotLine;
    for (int line = 1;; ++line) {
        bool const moreWant = static_cast<bool>(std::getline(want, wantLine));
        bool const moreGot = static_cast<bool>(std::getline(got, gotLine));
        if (!moreWant && !moreGot)
            return ::testing::AssertionFailure() << file << ": line ends differ";
        if (!moreWant || !moreGot || wantLine != gotLine)
            return ::testing::AssertionFailure()
                   << file << " differs at line " << line
                   << "\n  golden: " << (moreWant ? wantLine : "<end>")
                   << "\n  actual: " << (moreGot ? gotLine : "<end>")
                   << "\n(KOLT_UPDATE_GOLDEN=1 rewrites the golden files)";
    }
}

} // namespace testsupport
