#include "kolt/StringUtils.h"

#include <cstring>
#include <cwchar>

namespace kolt {

namespace {

constexpr char32_t REPLACEMENT = 0xFFFD;

// Decodes one code point at `pos` of a UTF-8 text of `length` bytes and advances `pos`. An
// invalid sequence yields U+FFFD and consumes its maximal valid prefix (at least one byte), the
// replacement policy that Unicode recommends.
char32_t decodeUTF8(unsigned char const* text, size_t length, size_t& pos) {
    unsigned char const lead = text[pos++];
    if (lead < 0x80)
        return lead;
    size_t trailing = 0;
    char32_t codePoint = 0;
    unsigned char low = 0x80;
    unsigned char high = 0xBF;
    if (lead >= 0xC2 && lead <= 0xDF) {
        trailing = 1;
        codePoint = lead & 0x1F;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        trailing = 2;
        codePoint = lead & 0x0F;
        if (lead == 0xE0)
            low = 0xA0; // no overlong forms
        else if (lead == 0xED)
            high = 0x9F; // no surrogates
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        trailing = 3;
        codePoint = lead & 0x07;
        if (lead == 0xF0)
            low = 0x90;
        else if (lead == 0xF4)
            high = 0x8F; // nothing above U+10FFFF
    } else {
        return REPLACEMENT;
    }
    for (size_t i = 0; i < trailing; ++i) {
        if (pos >= length)
            return REPLACEMENT;
        unsigned char const byte = text[pos];
        if (byte < low || byte > high)
            return REPLACEMENT;
        low = 0x80;
        high = 0xBF;
        codePoint = (codePoint << 6) | (byte & 0x3F);
        ++pos;
    }
    return codePoint;
}

// Decodes one code point of UTF-16 units; unpaired surrogates yield U+FFFD. Units above 0xFFFF
// (a wchar_t that holds a whole code point) are taken as they are when they are valid.
char32_t decodeUTF16(wchar_t const* text, size_t length, size_t& pos) {
    char32_t const unit = static_cast<char32_t>(text[pos++]);
    if (unit >= 0xD800 && unit <= 0xDBFF) {
        if (pos < length) {
            char32_t const next = static_cast<char32_t>(text[pos]);
            if (next >= 0xDC00 && next <= 0xDFFF) {
                ++pos;
                return 0x10000 + ((unit - 0xD800) << 10) + (next - 0xDC00);
            }
        }
        return REPLACEMENT;
    }
    if (unit >= 0xDC00 && unit <= 0xDFFF)
        return REPLACEMENT;
    if (unit > 0x10FFFF)
        return REPLACEMENT;
    return unit;
}

size_t encodeUTF8(char32_t codePoint, char* out) {
    if (codePoint < 0x80) {
        out[0] = static_cast<char>(codePoint);
        return 1;
    }
    if (codePoint < 0x800) {
        out[0] = static_cast<char>(0xC0 | (codePoint >> 6));
        out[1] = static_cast<char>(0x80 | (codePoint & 0x3F));
        return 2;
    }
    if (codePoint < 0x10000) {
        out[0] = static_cast<char>(0xE0 | (codePoint >> 12));
        out[1] = static_cast<char>(0x80 | ((codePoint >> 6) & 0x3F));
        out[2] = static_cast<char>(0x80 | (codePoint & 0x3F));
        return 3;
    }
    out[0] = static_cast<char>(0xF0 | (codePoint >> 18));
    out[1] = static_cast<char>(0x80 | ((codePoint >> 12) & 0x3F));
    out[2] = static_cast<char>(0x80 | ((codePoint >> 6) & 0x3F));
    out[3] = static_cast<char>(0x80 | (codePoint & 0x3F));
    return 4;
}

size_t encodeUTF16(char32_t codePoint, wchar_t* out) {
    if (codePoint < 0x10000) {
        out[0] = static_cast<wchar_t>(codePoint);
        return 1;
    }
    codePoint -= 0x10000;
    out[0] = static_cast<wchar_t>(0xD800 + (codePoint >> 10));
    out[1] = static_cast<wchar_t>(0xDC00 + (codePoint & 0x3FF));
    return 2;
}

// Converts into `buffer` of `capacity` units as far as whole code points fit (keeping one unit
// for the terminator) and returns the units the whole text needs, the terminator included.
template <typename In, typename Out, typename Decode, typename Encode>
size_t convert(In const* text, size_t length, Out* buffer, size_t capacity, Decode decode,
               Encode encode) {
    size_t needed = 0;
    size_t written = 0;
    bool full = capacity == 0 || buffer == nullptr;
    Out units[4];
    for (size_t pos = 0; pos < length;) {
        // ASCII is copied unit for unit; most text is.
        if (static_cast<uint32_t>(text[pos]) < 0x80) {
            if (!full && written + 1 < capacity)
                buffer[written++] = static_cast<Out>(text[pos]);
            else
                full = true;
            ++needed;
            ++pos;
            continue;
        }
        size_t const count = encode(decode(text, length, pos), units);
        if (!full && written + count < capacity) {
            for (size_t i = 0; i < count; ++i)
                buffer[written++] = units[i];
        } else {
            full = true;
        }
        needed += count;
    }
    if (buffer != nullptr && capacity > 0)
        buffer[written] = Out(0);
    return needed + 1;
}

} // namespace

wchar_t* StringUtils::toUTF16FromUTF8(char const* utf8String, wchar_t* buffer, size_t* size,
                                      Status* status) {
    if (utf8String == nullptr || size == nullptr) {
        if (status != nullptr)
            *status = STATUS_ILLEGAL_VALUE;
        return buffer;
    }
    size_t const capacity = *size;
    *size = convert(reinterpret_cast<unsigned char const*>(utf8String), std::strlen(utf8String),
                    buffer, capacity, decodeUTF8, encodeUTF16);
    if (status != nullptr)
        *status = *size <= capacity && buffer != nullptr ? STATUS_OK : STATUS_BUFFER_TOO_SMALL;
    return buffer;
}

char* StringUtils::toUTF8FromUTF16(wchar_t const* utf16String, char* buffer, size_t* size,
                                   Status* status) {
    if (utf16String == nullptr || size == nullptr) {
        if (status != nullptr)
            *status = STATUS_ILLEGAL_VALUE;
        return buffer;
    }
    size_t const capacity = *size;
    *size =
        convert(utf16String, std::wcslen(utf16String), buffer, capacity, decodeUTF16, encodeUTF8);
    if (status != nullptr)
        *status = *size <= capacity && buffer != nullptr ? STATUS_OK : STATUS_BUFFER_TOO_SMALL;
    return buffer;
}

std::wstring StringUtils::toUTF16(std::string const& utf8) {
    std::wstring result;
    result.reserve(utf8.size());
    wchar_t units[2];
    auto const* text = reinterpret_cast<unsigned char const*>(utf8.data());
    for (size_t pos = 0; pos < utf8.size();) {
        if (text[pos] < 0x80)
            result += static_cast<wchar_t>(text[pos++]);
        else
            result.append(units, encodeUTF16(decodeUTF8(text, utf8.size(), pos), units));
    }
    return result;
}

std::string StringUtils::toUTF8(std::wstring const& utf16) {
    std::string result;
    result.reserve(utf16.size());
    char units[4];
    for (size_t pos = 0; pos < utf16.size();) {
        if (static_cast<uint32_t>(utf16[pos]) < 0x80)
            result += static_cast<char>(utf16[pos++]);
        else
            result.append(units, encodeUTF8(decodeUTF16(utf16.data(), utf16.size(), pos), units));
    }
    return result;
}

std::wstring StringUtils::toLowerASCII(std::wstring text) {
    for (wchar_t& c : text)
        if (c >= L'A' && c <= L'Z')
            c = static_cast<wchar_t>(c - L'A' + L'a');
    return text;
}

} // namespace kolt
