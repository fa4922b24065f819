#pragma once

#include "kolt/Status.h"

#include <cstddef>
#include <string>

namespace kolt {

// Conversions between UTF-8 and UTF-16. On Linux each wchar_t holds one UTF-16 code unit.
// Malformed input (invalid UTF-8, unpaired surrogates) becomes U+FFFD; the rest is kept.
class StringUtils {
public:
    // `size` is in and out: in, the capacity of `buffer` in wchar_t units (buffer may be null
    // when it is 0); out, the units the whole text needs including the terminator. The buffer
    // is filled as far as it goes, never with half a surrogate pair, and always terminated when
    // it has room for anything. `status` (may be null) is STATUS_OK when everything fit,
    // STATUS_BUFFER_TOO_SMALL otherwise, STATUS_ILLEGAL_VALUE for a null text or size.
    static wchar_t* toUTF16FromUTF8(char const* utf8String, wchar_t* buffer, size_t* size,
                                    Status* status = nullptr);

    // As above in the other direction; `size` counts bytes. Multi-byte sequences are never cut.
    static char* toUTF8FromUTF16(wchar_t const* utf16String, char* buffer, size_t* size,
                                 Status* status = nullptr);

    // Whole-string forms of the two conversions.
    static std::wstring toUTF16(std::string const& utf8);
    static std::string toUTF8(std::wstring const& utf16);

    // ASCII-only lower-casing, used for file extensions and schemes.
    static std::wstring toLowerASCII(std::wstring text);
};

} // namespace kolt
