#pragma once

#include <string>

// UTF-8 text from the reader to the UTF-16 wide strings used everywhere else in the codec.
std::wstring toWide(std::string const& text);
