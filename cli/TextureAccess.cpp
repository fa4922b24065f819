#include "TextureAccess.h"

#include <koltx/DataBackend.h>

#include <algorithm>
#include <stdexcept>

namespace fs = std::filesystem;

namespace {

// Each decoding thread has its own run, so the host's one filter asks the thread's own policy.
thread_local TextureAccess* t_current = nullptr;
std::once_flag g_installed;

bool within(fs::path const& file, fs::path const& folder) {
    auto const mismatch = std::mismatch(folder.begin(), folder.end(), file.begin(), file.end());
    return mismatch.first == folder.end();
}

} // namespace

TextureAccess::TextureAccess(std::string const& inputPath, std::vector<std::string> const& roots,
                             bool anyPath)
    : any(anyPath) {
    for (auto const& root : roots) {
        std::error_code error;
        fs::path const canonical = fs::canonical(root, error);
        if (error || !fs::is_directory(canonical))
            throw std::runtime_error("--texture-root " + root + ": " +
                                     (error ? error.message() : "not a folder"));
        allowed.push_back(canonical);
    }
    std::error_code error;
    fs::path const own = fs::canonical(fs::absolute(inputPath).parent_path(), error);
    if (!error)
        allowed.push_back(own);
    previous = t_current;
    t_current = this;
    std::call_once(g_installed, [] {
        koltx::DataBackend::setTextureFilter([](std::string const& canonicalPath) {
            return t_current ? t_current->check(canonicalPath)
                             : std::string("read outside any conversion");
        });
    });
}

TextureAccess::~TextureAccess() {
    t_current = previous;
}

std::string TextureAccess::check(std::string const& canonicalPath) {
    fs::path const file(canonicalPath);
    std::error_code error;
    // Devices and pipes can block a read or never end it.
    if (!fs::is_regular_file(file, error))
        return "not a regular file";
    bool const inside = any || std::any_of(allowed.begin(), allowed.end(),
                                           [&](fs::path const& f) { return within(file, f); });
    if (!inside)
        return "outside the input's folder; allow it with --texture-root DIR or "
               "--any-texture-path";
    std::lock_guard<std::mutex> const held(mutex);
    read.push_back(file);
    return std::string();
}

std::vector<fs::path> TextureAccess::readFiles() const {
    std::lock_guard<std::mutex> const held(mutex);
    return read;
}
