#pragma once

#include <array>
#include <string_view>

// The GML geometry aggregates, in schema spelling. "gml:CompositeSolid" stands twice; the
// second row can never match and is kept so the table's order stays as readers expect.
extern std::array<std::wstring_view, 14> const GmlGeometryTags;

// True if `tag` equals a row of GmlGeometryTags ignoring case.
bool isGmlGeometryTag(std::wstring_view tag);

// The first row equal to `tag` ignoring case, otherwise `tag` itself.
std::wstring_view canonicalGmlGeometryTag(std::wstring_view tag);
