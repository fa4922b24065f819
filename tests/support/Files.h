#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

namespace testsupport {

// The whole file as bytes; empty when it cannot be read.
std::string readFile(std::filesystem::path const& path);

// Replaces the file with `bytes`, making its folder first.
void writeFile(std::filesystem::path const& path, std::string const& bytes);

// How often `what` occurs in `text`, overlaps included.
std::size_t countOf(std::string const& text, std::string const& what);

// The names of the entries of `folder`, sorted.
std::vector<std::string> filesIn(std::filesystem::path const& folder);

// The lines of a table file, without blank lines and comment lines (starting with '#').
std::vector<std::string> tableRows(std::filesystem::path const& path);

// The parts of `line` between the separators, trailing blanks dropped; words when the separator
// is a blank.
std::vector<std::string> split(std::string const& line, std::string const& separator = " ");

} // namespace testsupport
