#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace testsupport {

// The identifiers the codec makes up: version 4 UUIDs that start with a letter.
inline constexpr char identifierPattern[] =
    "[a-f][0-9a-f]{7}-[0-9a-f]{4}-4[0-9a-f]{3}-[89ab][0-9a-f]{3}-[0-9a-f]{12}";

// `text` with every made-up identifier replaced by "ID", so that runs compare equal.
std::string maskIdentifiers(std::string const& text);

// tests/golden/<name>
std::filesystem::path goldenFile(std::string const& name);

// Compares `actual`, identifiers masked unless `mask` is false, with the golden file `name`. With
// KOLT_UPDATE_GOLDEN=1 in the environment the golden file is rewritten instead and the check
// passes.
::testing::AssertionResult matchesGolden(std::string const& name, std::string const& actual,
                                         bool mask = true);

} // namespace testsupport
