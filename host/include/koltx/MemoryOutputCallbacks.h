#pragma once

#include "kolt/Callbacks.h"

#include <cstdint>
#include <map>
#include <mutex>
#include <string>
#include <vector>

namespace koltx {

// Keeps outputs as named byte buffers. An output becomes visible by its name only when closed;
// closing it again under the same name replaces the earlier bytes.
class MemoryOutputCallbacks : public kolt::SimpleOutputCallbacks {
public:
    // Largest output; a write beyond it fails with STATUS_IO.
    static constexpr uint64_t MAX_BYTES = uint64_t(1) << 36;

    struct Output {
        std::wstring encoderId;
        int32_t contentType = 0;
        std::vector<uint8_t> bytes;
    };

    MemoryOutputCallbacks();
    ~MemoryOutputCallbacks() override;

    uint64_t open(wchar_t const* encoderId, int32_t contentType, wchar_t const* name, int32_t mode,
                  uint64_t sizeHint, kolt::Status* status) override;
    kolt::Status write(uint64_t handle, void const* data, size_t size) override;
    kolt::Status seek(uint64_t handle, int64_t offset, int32_t direction) override;
    uint64_t tell(uint64_t handle, kolt::Status* status) override;
    kolt::Status close(uint64_t handle, bool discard, uint64_t* size) override;

    // Names of the closed outputs, in code unit order.
    std::vector<std::wstring> getNames() const;
    // Null if no output of that name was closed.
    Output const* find(std::wstring const& name) const;
    // The bytes as text; throws std::out_of_range for an unknown name.
    std::string getText(std::wstring const& name) const;
    size_t getOpenCount() const;

private:
    struct Pending {
        std::wstring name;
        Output output;
        uint64_t position = 0;
    };

    mutable std::mutex mutex;
    std::map<std::wstring, Output> closed;
    std::map<uint64_t, Pending> pending;
    uint64_t nextHandle = 1;
};

} // namespace koltx
