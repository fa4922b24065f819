#include "koltx/DataBackend.h"

#include "ImageReader.h"
#include "kolt/StringUtils.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
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

// Texture files beyond this size are refused before they are read.
constexpr std::uint64_t MaxTextureFileBytes = std::uint64_t(256) << 20;

// Reads a whole regular file; false with `error` set when it cannot. Opening never waits (a FIFO
// opens at once) and anything but a regular file is refused, so nothing blocks or streams forever.
bool readFile(std::string const& path, std::vector<uint8_t>& bytes, std::string& error) {
    int const fd = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0) {
        error = std::strerror(errno);
        return false;
    }
    struct stat info {};
    if (::fstat(fd, &info) != 0)
        error = std::strerror(errno);
    else if (!S_ISREG(info.st_mode))
        error = "not a regular file";
    else if (static_cast<std::uint64_t>(info.st_size) > MaxTextureFileBytes)
        error = "larger than " + std::to_string(MaxTextureFileBytes >> 20) + " MB";
    if (error.empty()) {
        bytes.resize(static_cast<std::size_t>(info.st_size));
        std::size_t done = 0;
        // A file that grows meanwhile is read as far as its size said.
        while (done < bytes.size()) {
            ssize_t const n = ::read(fd, bytes.data() + done, bytes.size() - done);
            if (n < 0 && errno == EINTR)
                continue;
            if (n < 0) {
                error = std::strerror(errno);
                break;
            }
            if (n == 0)
                break;
            done += static_cast<std::size_t>(n);
        }
        bytes.resize(done);
    }
    ::close(fd);
    return error.empty();
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
