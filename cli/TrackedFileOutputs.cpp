#include "TrackedFileOutputs.h"

#include <algorithm>
#include <filesystem>

TrackedFileOutputs::TrackedFileOutputs(std::string directory)
    : koltx::FileOutputCallbacks(std::move(directory)) {}

void TrackedFileOutputs::protect(std::string const& path) {
    std::error_code error;
    auto const canonical = std::filesystem::weakly_canonical(path, error);
    protectedPaths.push_back(error ? path : canonical.string());
}

uint64_t TrackedFileOutputs::open(wchar_t const* encoderId, int32_t contentType,
                                  wchar_t const* name, int32_t mode, uint64_t sizeHint,
                                  kolt::Status* status) {
    if (name != nullptr && !protectedPaths.empty()) {
        std::error_code error;
        std::string const target = targetPath(name);
        auto const canonical = std::filesystem::weakly_canonical(target, error);
        std::string const path = error ? target : canonical.string();
        if (std::find(protectedPaths.begin(), protectedPaths.end(), path) != protectedPaths.end()) {
            refusedPath = path;
            if (status != nullptr)
                *status = kolt::SimpleOutputCallbacks::STATUS_EXISTS;
            return 0;
        }
    }
    kolt::Status local = kolt::STATUS_UNSPECIFIED_ERROR;
    uint64_t const handle =
        koltx::FileOutputCallbacks::open(encoderId, contentType, name, mode, sizeHint, &local);
    if (local == kolt::STATUS_OK && name != nullptr)
        pending[handle] = targetPath(name);
    if (status != nullptr)
        *status = local;
    return handle;
}

kolt::Status TrackedFileOutputs::close(uint64_t handle, bool discard, uint64_t* size) {
    kolt::Status const status = koltx::FileOutputCallbacks::close(handle, discard, size);
    auto const found = pending.find(handle);
    if (found != pending.end()) {
        if (status == kolt::STATUS_OK && !discard)
            files.push_back(found->second);
        pending.erase(found);
    }
    return status;
}

void TrackedFileOutputs::removeWritten() {
    for (auto const& file : files) {
        std::error_code ignored;
        std::filesystem::remove(file, ignored);
    }
    files.clear();
}
