#pragma once

#include <string>
#include <string_view>

// UTF-8 text from the reader to the UTF-16 wide strings used everywhere else in the codec.
std::wstring toWide(std::string_view text);
