#pragma once

#include <array>
#include <string>
#include <string_view>

namespace gml {

// The 16 bytes of an identifier; a tree with hundreds of thousands of them keeps these rather
// than their text, and prints the text when the document is written.
using UuidBytes = std::array<unsigned char, 16>;

constexpr std::size_t uuidTextLength = 36;

// Fresh bytes whose text form is what newUuidString returns.
UuidBytes newUuid();
// Appends the text form: lower-case hex digits, dashes after the 4th, 6th, 8th and 10th byte.
void appendUuid(std::wstring& out, UuidBytes const& bytes);
// The bytes of `text` if appendUuid would give back exactly `text`.
bool parseUuid(std::wstring_view text, UuidBytes& bytes);

// A fresh identifier: the text form of a random version 4 UUID whose first character is a
// letter, so that it can serve as a gml:id. Safe to call from any thread.
std::wstring newUuidString();

} // namespace gml
