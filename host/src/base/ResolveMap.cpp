#include "koltx/ResolveMap.h"

#include "kolt/StringUtils.h"
#include "koltx/URIUtils.h"

#include <filesystem>

namespace koltx {

namespace {

bool isAbsoluteKey(std::wstring const& key) {
    return (!key.empty() && key[0] == L'/') || URIUtils::hasScheme(key);
}

// The folder part of a key or URI text, with its closing "/", or empty when it has none.
std::wstring folderOf(std::wstring const& text) {
    size_t const slash = text.rfind(L'/');
    return slash == std::wstring::npos ? std::wstring() : text.substr(0, slash + 1);
}

// Joins `key` to `folder` and resolves "." and "..", keeping a scheme and authority intact.
std::wstring join(std::wstring const& folder, std::wstring const& key) {
    std::wstring const combined = folder + key;
    if (!URIUtils::hasScheme(combined))
        return URIUtils::normalizePath(combined);
    size_t pathStart = combined.find(L':') + 1;
    if (combined.compare(pathStart, 2, L"//") == 0) {
        size_t const slash = combined.find(L'/', pathStart + 2);
        pathStart = slash == std::wstring::npos ? combined.size() : slash;
    }
    return combined.substr(0, pathStart) + URIUtils::normalizePath(combined.substr(pathStart));
}

} // namespace

ResolveMap::ResolveMap() = default;

ResolveMap::~ResolveMap() = default;

void ResolveMap::addEntry(std::wstring const& key, std::shared_ptr<URI> const& uri) {
    entries[key] = uri;
}

std::shared_ptr<URI> ResolveMap::resolveKey(std::wstring const& key) const {
    auto const it = entries.find(key);
    return it != entries.end() ? it->second : nullptr;
}

bool ResolveMap::hasKey(std::wstring const& key) const {
    return entries.count(key) > 0;
}

std::vector<std::wstring> ResolveMap::getKeys() const {
    std::vector<std::wstring> keys;
    for (auto const& entry : entries)
        keys.push_back(entry.first);
    return keys;
}

std::shared_ptr<URI> ResolveMap::resolveKeyWithURIFallback(ResolveMap const* resolveMap,
                                                           std::wstring const& key) {
    if (key.empty())
        return nullptr;
    if (resolveMap != nullptr) {
        if (auto uri = resolveMap->resolveKey(key))
            return uri;
    }
    if (URIUtils::hasScheme(key))
        return URI::create(key);
    // A path is taken literally; only when no such file exists but its percent-decoded form
    // does (a URI reference such as "my%20wall.png") is the decoded one meant.
    if (key.find(L'%') != std::wstring::npos) {
        std::wstring const decoded = URIUtils::percentDecode(key);
        std::error_code error;
        if (decoded != key && !std::filesystem::exists(kolt::StringUtils::toUTF8(key), error) &&
            std::filesystem::exists(kolt::StringUtils::toUTF8(decoded), error))
            return URIUtils::createFileURIFromPath(decoded);
    }
    return URIUtils::createFileURIFromPath(key);
}

std::wstring ResolveMap::anchorRelativeKey(ResolveMap const* resolveMap, std::wstring const& anchor,
                                           std::wstring const& key) {
    if (isAbsoluteKey(key))
        return join(std::wstring(), key);
    std::wstring const anchored = join(folderOf(anchor), key);
    if (resolveMap == nullptr || resolveMap->hasKey(anchored))
        return anchored;
    if (auto const anchorURI = resolveMap->resolveKey(anchor)) {
        // URI parsing takes blanks and stray "%" literally, so the key needs no encoding.
        return join(folderOf(anchorURI->wstring()), key);
    }
    return anchored;
}

} // namespace koltx
