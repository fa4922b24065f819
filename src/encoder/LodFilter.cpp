#include "encoder/LodFilter.h"

#include <cerrno>
#include <climits>
#include <cwchar>
#include <cwctype>
#include <stdexcept>
#include <string>

bool lodWithinLimit(std::wstring_view tag, std::uint32_t limit) {
    auto const pos = tag.find(L":lod");
    if (pos == std::wstring_view::npos)
        return true;
    std::wstring digits;
    for (std::size_t i = pos + 4; i < tag.size() && std::iswdigit(static_cast<wint_t>(tag[i])); ++i)
        digits += tag[i];
    if (digits.empty())
        throw std::invalid_argument("invalid stoi argument");
    errno = 0;
    wchar_t* end = nullptr;
    long const value = std::wcstol(digits.c_str(), &end, 10);
    if (errno == ERANGE || value > INT_MAX || value < INT_MIN)
        throw std::out_of_range("stoi argument out of range");
    return static_cast<std::uint32_t>(value) <= limit;
}
