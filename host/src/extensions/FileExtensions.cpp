#include "koltx/FileExtensions.h"

#include "kolt/StringUtils.h"

namespace koltx {

namespace {

std::wstring trim(std::wstring const& text) {
    size_t const first = text.find_first_not_of(L" \t");
    if (first == std::wstring::npos)
        return std::wstring();
    size_t const last = text.find_last_not_of(L" \t");
    return text.substr(first, last - first + 1);
}

} // namespace

FileExtensions::FileExtensions(std::wstring const& list) {
    size_t start = 0;
    while (start <= list.size()) {
        size_t end = list.find(L';', start);
        if (end == std::wstring::npos)
            end = list.size();
        std::wstring item = kolt::StringUtils::toLowerASCII(trim(list.substr(start, end - start)));
        if (!item.empty()) {
            if (item[0] != L'.')
                item.insert(0, L".");
            extensions.push_back(item);
        }
        start = end + 1;
    }
}

bool FileExtensions::matches(std::wstring const& pathOrURI) const {
    std::wstring name = pathOrURI;
    size_t const cut = name.find_first_of(L"?#");
    if (cut != std::wstring::npos && name.find(L':') != std::wstring::npos)
        name.erase(cut);
    name = kolt::StringUtils::toLowerASCII(name);
    for (auto const& extension : extensions)
        if (name.size() > extension.size() &&
            name.compare(name.size() - extension.size(), extension.size(), extension) == 0)
            return true;
    return false;
}

std::wstring FileExtensions::toString() const {
    std::wstring result;
    for (auto const& extension : extensions)
        result += extension + L";";
    return result;
}

} // namespace koltx
