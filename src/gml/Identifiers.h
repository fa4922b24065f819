#pragma once

#include <string>

namespace gml {

// A fresh identifier: the text form of a random version 4 UUID whose first character is a
// letter, so that it can serve as a gml:id. Safe to call from any thread.
std::wstring newUuidString();

} // namespace gml
