#include "koltx/URIUtils.h"

#include "kolt/StringUtils.h"

#include <filesystem>
#include <vector>

namespace koltx {

namespace {

int hexValue(wchar_t c) {
    if (c >= L'0' && c <= L'9')
        return c - L'0';
    if (c >= L'a' && c <= L'f')
        return c - L'a' + 10;
    if (c >= L'A' && c <= L'F')
        return c - L'A' + 10;
    return -1;
}

} // namespace

std::wstring URIUtils::percentEncode(std::wstring const& text) {
    return percentEncode(text, L"/");
}

std::wstring URIUtils::percentEncode(std::wstring const& text, wchar_t const* keep) {
    static wchar_t const hex[] = L"0123456789ABCDEF";
    std::wstring const kept(keep);
    std::wstring result;
    for (unsigned char const byte : kolt::StringUtils::toUTF8(text)) {
        bool const unreserved = (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z') ||
                                (byte >= '0' && byte <= '9') || byte == '-' || byte == '.' ||
                                byte == '_' || byte == '~';
        if (unreserved || (byte < 0x80 && kept.find(wchar_t(byte)) != std::wstring::npos)) {
            result += wchar_t(byte);
        } else {
            result += L'%';
            result += hex[byte >> 4];
            result += hex[byte & 15];
        }
    }
    return result;
}

std::wstring URIUtils::percentDecode(std::wstring const& text) {
    if (text.find(L'%') == std::wstring::npos)
        return text;
    // Decoded bytes are collected as UTF-8 and widened once, so multi-byte characters survive.
    std::string bytes;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] == L'%' && i + 2 < text.size() && hexValue(text[i + 1]) >= 0 &&
            hexValue(text[i + 2]) >= 0) {
            bytes += static_cast<char>(hexValue(text[i + 1]) * 16 + hexValue(text[i + 2]));
            i += 2;
        } else {
            bytes += kolt::StringUtils::toUTF8(std::wstring(1, text[i]));
        }
    }
    return kolt::StringUtils::toUTF16(bytes);
}

std::shared_ptr<URI> URIUtils::createFileURI(std::wstring const& encodedPath) {
    std::wstring path = encodedPath;
    if (path.empty() || path[0] != L'/')
        path.insert(0, L"/");
    return URI::create(L"file://" + path);
}

std::shared_ptr<URI> URIUtils::createFileURIFromPath(std::wstring const& path) {
    if (path.empty())
        return nullptr;
    std::wstring absolute = path;
    if (absolute[0] != L'/') {
        std::error_code error;
        std::string const current = std::filesystem::current_path(error).string();
        absolute = kolt::StringUtils::toUTF16(current) + L"/" + absolute;
    }
    return createFileURI(percentEncode(normalizePath(absolute)));
}

std::shared_ptr<URI> URIUtils::replaceExtension(std::shared_ptr<URI> const& uri,
                                                std::wstring const& extension) {
    if (!uri)
        return nullptr;
    std::wstring path = uri->getPath();
    size_t const slash = path.rfind(L'/');
    size_t const nameStart = slash == std::wstring::npos ? 0 : slash + 1;
    size_t const dot = path.rfind(L'.');
    if (dot != std::wstring::npos && dot > nameStart)
        path.erase(dot);
    path += extension;
    return std::shared_ptr<URI>(
        new URI(uri->getScheme(), uri->getAuthority(), path, uri->getQuery(), uri->getFragment()));
}

std::wstring URIUtils::normalizePath(std::wstring const& path) {
    bool const absolute = !path.empty() && path[0] == L'/';
    bool const trailingSlash =
        !path.empty() && (path.back() == L'/' || path == L"." || path == L".." ||
                          (path.size() >= 2 && path.compare(path.size() - 2, 2, L"/.") == 0) ||
                          (path.size() >= 3 && path.compare(path.size() - 3, 3, L"/..") == 0));
    std::vector<std::wstring> segments;
    size_t start = 0;
    while (start <= path.size()) {
        size_t end = path.find(L'/', start);
        if (end == std::wstring::npos)
            end = path.size();
        std::wstring const segment = path.substr(start, end - start);
        if (segment == L"..") {
            if (!segments.empty() && segments.back() != L"..")
                segments.pop_back();
            else if (!absolute)
                segments.push_back(segment);
        } else if (!segment.empty() && segment != L".") {
            segments.push_back(segment);
        }
        start = end + 1;
    }
    std::wstring result = absolute ? L"/" : L"";
    for (size_t i = 0; i < segments.size(); ++i) {
        if (i > 0)
            result += L"/";
        result += segments[i];
    }
    if (trailingSlash && !segments.empty())
        result += L"/";
    if (result.empty() && !absolute)
        result = L".";
    return result;
}

bool URIUtils::hasScheme(std::wstring const& text) {
    // A scheme of one letter would be a drive letter; such paths are not URIs.
    size_t const colon = text.find(L':');
    if (colon == std::wstring::npos || colon < 2)
        return false;
    auto const isAlpha = [](wchar_t c) {
        return (c >= L'a' && c <= L'z') || (c >= L'A' && c <= L'Z');
    };
    if (!isAlpha(text[0]))
        return false;
    for (size_t i = 1; i < colon; ++i) {
        wchar_t const c = text[i];
        if (!isAlpha(c) && !(c >= L'0' && c <= L'9') && c != L'+' && c != L'-' && c != L'.')
            return false;
    }
    return true;
}

} // namespace koltx
