#include "koltx/DataBackend.h"

#include "ImageReader.h"
#include "kolt/StringUtils.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <mutex>
#include <vector>

namespace koltx {

namespace {

void warn(std::wstring* warnings, std::wstring const& text) {
    if (warnings != nullptr)
        *warnings += text + L"\n";
}

// Reads a whole file; false with `error` set when it cannot.
bool readFile(std::string const& path, std::vector<uint8_t>& bytes, std::string& error) {
    std::FILE* file = std::fopen(path.c_str(), "rb");
    if (file == nullptr) {
        error = std::strerror(errno);
        return false;
    }
    uint8_t buffer[65536];
    size_t count = 0;
    while ((count = std::fread(buffer, 1, sizeof(buffer), file)) > 0)
        bytes.insert(bytes.end(), buffer, buffer + count);
    bool const failed = std::ferror(file) != 0;
    std::fclose(file);
    if (failed)
        error = "read error";
    return !failed;
}

std::mutex g_filterMutex;
std::shared_ptr<DataBackend::TextureFilter const> g_filter;

std::shared_ptr<DataBackend::TextureFilter const> currentFilter() {
    std::lock_guard<std::mutex> lock(g_filterMutex);
    return g_filter;
}

} // namespace

void DataBackend::setTextureFilter(TextureFilter filter) {
    auto next = filter ? std::make_shared<TextureFilter const>(std::move(filter)) : nullptr;
    std::lock_guard<std::mutex> lock(g_filterMutex);
    g_filter = std::move(next);
}

std::shared_ptr<Texture> DataBackend::resolveTexture(kolt::Cache* cache, std::wstring const& key,
                                                     ResolveMap const* resolveMap,
                                                     std::wstring* warnings) {
    auto const uri = ResolveMap::resolveKeyWithURIFallback(resolveMap, key);
    if (!uri || !uri->isValid()) {
        warn(warnings, L"Texture '" + key + L"' cannot be resolved.");
        return nullptr;
    }
    if (cache != nullptr) {
        if (auto cached =
                std::dynamic_pointer_cast<Texture>(cache->get(kolt::CT_TEXTURE, uri->wstring())))
            return cached;
    }
    if (!uri->isFile()) {
        warn(warnings, L"Texture '" + uri->wstring() + L"' cannot be read: scheme '" +
                           uri->getScheme() + L"' is not supported.");
        return nullptr;
    }
    std::string const path = uri->getNativePath();
    if (auto const filter = currentFilter()) {
        std::error_code ec;
        auto const canonical = std::filesystem::canonical(path, ec);
        // A path that does not resolve fails below with the system's reason.
        if (!ec) {
            std::string const reason = (*filter)(canonical.string());
            if (!reason.empty()) {
                warn(warnings, L"Texture file '" + kolt::StringUtils::toUTF16(path) +
                                   L"' refused: " + kolt::StringUtils::toUTF16(reason) + L".");
                return nullptr;
            }
        }
    }
    std::vector<uint8_t> bytes;
    std::string error;
    std::shared_ptr<Texture> texture;
    if (readFile(path, bytes, error))
        texture = ImageReader::read(bytes, uri, error);
    if (!texture) {
        warn(warnings, L"Texture file '" + kolt::StringUtils::toUTF16(path) +
                           L"' cannot be read: " + kolt::StringUtils::toUTF16(error) + L".");
        return nullptr;
    }
    if (cache != nullptr) {
        // Another thread may have stored the same image meanwhile; share that one.
        if (auto stored = std::dynamic_pointer_cast<Texture>(
                cache->insert(kolt::CT_TEXTURE, uri->wstring(), texture)))
            texture = stored;
    }
    return texture;
}

} // namespace koltx
