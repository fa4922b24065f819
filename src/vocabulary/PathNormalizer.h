#pragma once

#include <string>
#include <string_view>

// Rewrites a parser path (lower-case tags) into a mesh path in schema spelling: every
// component gets brackets and a closing backslash; text after the last backslash is dropped.
std::wstring normalizeNodePath(std::wstring const& path);

// Sets *version to `seed`, then to 2 or 3 by the tags of `path`; a single 3.0 tag decides for
// 3.0. A seed above 2 is taken as known and the path is not read. True if *version > 0.
bool detectCityGMLVersion(std::wstring_view path, int* version, int seed);
