#pragma once

#include <filesystem>
#include <mutex>
#include <string>
#include <vector>

// Which texture files a run may read: regular files in the input's own folder and below (links
// resolved), in folders given with --texture-root, or anywhere with --any-texture-path. Installed
// as the policy of the calling thread's texture reads for the life of the object; remembers every
// file it let through, so that no output replaces one.
class TextureAccess {
public:
    // Throws std::runtime_error when a root is not a folder.
    TextureAccess(std::string const& inputPath, std::vector<std::string> const& roots,
                  bool anyPath);
    TextureAccess(TextureAccess const&) = delete;
    TextureAccess& operator=(TextureAccess const&) = delete;
    ~TextureAccess();

    // "" when `canonicalPath` may be read, otherwise the reason it may not.
    std::string check(std::string const& canonicalPath);
    // The texture files read so far, links resolved.
    std::vector<std::filesystem::path> readFiles() const;

private:
    std::vector<std::filesystem::path> allowed; // canonical folders
    bool any;
    mutable std::mutex mutex;
    std::vector<std::filesystem::path> read;
    TextureAccess* previous = nullptr; // the thread's policy before this one
};
