#include "decoder/WideText.h"

#include <kolt/StringUtils.h>

#include <vector>

std::wstring toWide(std::string const& text) {
    std::vector<wchar_t> buffer(text.size(), L'\0');
    std::size_t size = buffer.size();
    kolt::StringUtils::toUTF16FromUTF8(text.c_str(), buffer.data(), &size, nullptr);
    if (size > buffer.size()) {
        buffer.assign(size, L'\0');
        kolt::StringUtils::toUTF16FromUTF8(text.c_str(), buffer.data(), &size, nullptr);
    }
    std::wstring result(buffer.data(), buffer.size());
    result.resize(result.find(L'\0') == std::wstring::npos ? result.size() : result.find(L'\0'));
    return result;
}
