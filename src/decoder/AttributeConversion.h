#pragma once

#include <string>

namespace citygml {
class Object;
}
namespace koltx {
class GeometryBuilder;
}

// Sets every attribute of `object` on `builder` under "/fields/<name>": doubles as floats,
// integers as ints, everything else (dates, URIs, strings) as strings. An attribute that cannot
// be set is skipped with one line in `warnings`.
void convertAttributes(koltx::GeometryBuilder& builder, citygml::Object const& object,
                       std::wstring& warnings);
