#pragma once

#include "kolt/Callbacks.h"

#include <cstdio>
#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace koltx {

// Writes outputs as files below one directory. Each output goes to a temporary file beside its
// target and is renamed into place by close, so a reader never sees half a file and an output
// that is never closed (or closed with discard) leaves nothing behind. Names are relative paths
// in UTF-16; absolute names and names with a "." or ".." component are refused.
class FileOutputCallbacks : public kolt::SimpleOutputCallbacks {
public:
    explicit FileOutputCallbacks(std::string directory);
    ~FileOutputCallbacks() override;

    uint64_t open(wchar_t const* encoderId, int32_t contentType, wchar_t const* name, int32_t mode,
                  uint64_t sizeHint, kolt::Status* status) override;
    kolt::Status write(uint64_t handle, void const* data, size_t size) override;
    kolt::Status seek(uint64_t handle, int64_t offset, int32_t direction) override;
    uint64_t tell(uint64_t handle, kolt::Status* status) override;
    kolt::Status close(uint64_t handle, bool discard, uint64_t* size) override;

    std::string const& getDirectory() const { return directory; }
    // The target path that `name` has below the directory, or empty if the name is refused.
    std::string targetPath(std::wstring const& name) const;

private:
    struct Output {
        std::FILE* file = nullptr;
        std::string temporaryPath;
        std::string targetPath;
        bool failed = false;
        // The stream's buffer, freed after the stream is closed.
        std::unique_ptr<char[]> buffer;
    };

    std::string directory;
    std::mutex mutex;
    std::map<uint64_t, Output> outputs;
    uint64_t nextHandle = 1;
};

} // namespace koltx
