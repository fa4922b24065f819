#include "decoder/WideText.h"

#include <kolt/StringUtils.h>

#include <algorithm>
#include <vector>

std::wstring toWide(std::string const& text) {
    // UTF-16 never needs more units than UTF-8 has bytes; one more holds the terminator, so the
    // second call below is only a safeguard.
    std::vector<wchar_t> buffer(text.size() + 1, L'\0');
    std::size_t size = buffer.size();
    kolt::StringUtils::toUTF16FromUTF8(text.c_str(), buffer.data(), &size, nullptr);
    if (size > buffer.size()) {
        buffer.assign(size, L'\0');
        kolt::StringUtils::toUTF16FromUTF8(text.c_str(), buffer.data(), &size, nullptr);
    }
    return std::wstring(buffer.begin(), std::find(buffer.begin(), buffer.end(), L'\0'));
}
