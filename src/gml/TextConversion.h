#pragma once

#include <string>

namespace gml {

// UTF-16 text (one code unit per wchar_t) to UTF-8 bytes. A NUL code unit ends the text.
std::string toUtf8(const std::wstring& text);

} // namespace gml
