#pragma once

#include <koltx/FileOutputCallbacks.h>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

// The host's file outputs, remembering what they completed so that a conversion that fails
// half-way can take back the files it already wrote.
class TrackedFileOutputs : public koltx::FileOutputCallbacks {
public:
    explicit TrackedFileOutputs(std::string directory);

    kolt::Status close(uint64_t handle, bool discard, uint64_t* size) override;
    uint64_t open(wchar_t const* encoderId, int32_t contentType, wchar_t const* name, int32_t mode,
                  uint64_t sizeHint, kolt::Status* status) override;

    // Outputs onto these files are refused (with STATUS_EXISTS): the input's own textures must
    // not be replaced by images encoded again.
    void protect(std::string const& path);
    // The protected file that an output was refused for, or empty.
    std::string const& refused() const { return refusedPath; }

    // Paths of the files written so far, in order of completion.
    std::vector<std::string> const& written() const { return files; }
    // Removes every file written so far.
    void removeWritten();

private:
    std::map<uint64_t, std::string> pending;
    std::vector<std::string> files;
    std::vector<std::string> protectedPaths;
    std::string refusedPath;
};
