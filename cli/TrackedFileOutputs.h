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

    // Paths of the files written so far, in order of completion.
    std::vector<std::string> const& written() const { return files; }
    // Removes every file written so far.
    void removeWritten();

private:
    std::map<uint64_t, std::string> pending;
    std::vector<std::string> files;
};
