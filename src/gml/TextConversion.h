#pragma once

#include <string>
#include <string_view>

namespace gml {

// UTF-16 text (one code unit per wchar_t) to UTF-8 bytes. A NUL code unit ends the text.
std::string toUtf8(std::wstring const& text);
// The same bytes appended to `out`, with no allocation for ASCII text.
void appendUtf8(std::string& out, std::wstring_view text);

} // namespace gml
