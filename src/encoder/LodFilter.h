#pragma once

#include <cstdint>
#include <string_view>

// True if `tag` names no level of detail (no ":lod") or one of at most `limit`. The digits behind
// ":lod" are read as a decimal; with none, std::invalid_argument is thrown ("invalid stoi
// argument"), and a number beyond int gives std::out_of_range ("stoi argument out of range").
bool lodWithinLimit(std::wstring_view tag, std::uint32_t limit);
