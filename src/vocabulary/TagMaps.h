#pragma once

#include <map>
#include <string>

// Lower-case parser spelling of a tag to its schema spelling, one map per CityGML version.
// Both are built once at load and read-only afterwards.
using TagMap = std::map<std::wstring, std::wstring>;

extern TagMap const CityGML2Tags;
extern TagMap const CityGML3Tags;
