#pragma once

#include <cstddef>
#include <cstdint>

namespace kolt {

// Base of every object through which the host hands results back to the caller of a generation.
// Extensions find the kind they need with dynamic_cast.
class Callbacks {
public:
    Callbacks() = default;
    Callbacks(Callbacks const&) = delete;
    Callbacks& operator=(Callbacks const&) = delete;
    virtual ~Callbacks() = default;
};

// Named byte outputs. Every operation reports a status code: 0 success, anything else an error
// whose text koltx::StatusException gives.
class SimpleOutputCallbacks : public Callbacks {
public:
    // Directions of seek, as with fseek.
    static constexpr int32_t SEEK_BEGIN = 0;
    static constexpr int32_t SEEK_CURRENT = 1;
    static constexpr int32_t SEEK_END = 2;

    // Modes of open.
    static constexpr int32_t OPEN_REPLACE = 0; // an existing output of that name is replaced
    static constexpr int32_t OPEN_KEEP =
        1; // an existing output stays; open fails with STATUS_EXISTS

    // Status of open in OPEN_KEEP mode when the output exists already.
    static constexpr int32_t STATUS_EXISTS = 44;

    // Creates the output `name` for the encoder `encoderId` and returns its handle; `status`
    // (may be null) is set to 0 on success. `sizeHint` is the expected size in bytes or 0.
    virtual uint64_t open(wchar_t const* encoderId, int32_t contentType, wchar_t const* name,
                          int32_t mode, uint64_t sizeHint, int32_t* status) = 0;

    virtual int32_t write(uint64_t handle, void const* data, size_t size) = 0;

    virtual int32_t seek(uint64_t handle, int64_t offset, int32_t direction) = 0;

    virtual uint64_t tell(uint64_t handle, int32_t* status) = 0;

    // Completes the output. With `discard` set, the output is dropped instead and leaves nothing
    // behind. `size` (may be null) receives the number of bytes of the output.
    virtual int32_t close(uint64_t handle, bool discard, uint64_t* size) = 0;
};

} // namespace kolt
