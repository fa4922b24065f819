#include "decoder/WideText.h"

#include <kolt/StringUtils.h>

std::wstring toWide(std::string_view view) {
    // Ids and paths are nearly always ASCII, where each byte is its own unit.
    std::wstring ascii(view.size(), L'\0');
    std::size_t i = 0;
    for (; i < view.size() && static_cast<unsigned char>(view[i]) < 0x80 && view[i] != '\0'; ++i)
        ascii[i] = static_cast<wchar_t>(view[i]);
    if (i == view.size())
        return ascii;
    std::string const text(view); // the conversion reads up to a terminator
    // UTF-16 never needs more units than UTF-8 has bytes; one more holds the terminator, so the
    // second call below is only a safeguard.
    std::wstring buffer(text.size() + 1, L'\0');
    std::size_t size = buffer.size();
    kolt::StringUtils::toUTF16FromUTF8(text.c_str(), buffer.data(), &size, nullptr);
    if (size > buffer.size()) {
        buffer.assign(size, L'\0');
        kolt::StringUtils::toUTF16FromUTF8(text.c_str(), buffer.data(), &size, nullptr);
    }
    buffer.resize(buffer.find(L'\0'));
    return buffer;
}
