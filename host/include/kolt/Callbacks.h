#pragma once

#include "kolt/Status.h"

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
    static constexpr int32_t FROM_BEGIN = 0;
    static constexpr int32_t FROM_CURRENT = 1;
    static constexpr int32_t FROM_END = 2;

    // Modes of open.
    static constexpr int32_t OPEN_REPLACE = 0; // an existing output of that name is replaced
    static constexpr int32_t OPEN_KEEP =
        1; // an existing output stays; open fails with STATUS_EXISTS

    // Statuses of these callbacks beyond 0 (success) and 1 (unspecified error).
    static constexpr Status STATUS_EXISTS = 44;       // OPEN_KEEP and the output exists
    static constexpr Status STATUS_NAME_REFUSED = 46; // empty, absolute or climbing name
    static constexpr Status STATUS_BAD_HANDLE = 47;   // no open output has this handle
    static constexpr Status STATUS_IO = 48;           // the medium refused to write or move

    // Creates the output `name` for the encoder `encoderId` and returns its handle; `status`
    // (may be null) is set to 0 on success. `sizeHint` is the expected size in bytes or 0.
    virtual uint64_t open(wchar_t const* encoderId, int32_t contentType, wchar_t const* name,
                          int32_t mode, uint64_t sizeHint, Status* status) = 0;

    virtual Status write(uint64_t handle, void const* data, size_t size) = 0;

    virtual Status seek(uint64_t handle, int64_t offset, int32_t direction) = 0;

    virtual uint64_t tell(uint64_t handle, Status* status) = 0;

    // Completes the output. With `discard` set, the output is dropped instead and leaves nothing
    // behind. `size` (may be null) receives the number of bytes of the output.
    virtual Status close(uint64_t handle, bool discard, uint64_t* size) = 0;
};

} // namespace kolt
