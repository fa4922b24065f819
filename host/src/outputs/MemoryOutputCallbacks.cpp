#include "koltx/MemoryOutputCallbacks.h"

#include <cstring>
#include <stdexcept>

namespace koltx {

namespace {

void setStatus(kolt::Status* status, kolt::Status value) {
    if (status != nullptr)
        *status = value;
}

} // namespace

MemoryOutputCallbacks::MemoryOutputCallbacks() = default;
MemoryOutputCallbacks::~MemoryOutputCallbacks() = default;

uint64_t MemoryOutputCallbacks::open(wchar_t const* encoderId, int32_t contentType,
                                     wchar_t const* name, int32_t mode, uint64_t sizeHint,
                                     kolt::Status* status) {
    if (name == nullptr || *name == 0) {
        setStatus(status, STATUS_NAME_REFUSED);
        return 0;
    }
    std::lock_guard<std::mutex> lock(mutex);
    if (mode == OPEN_KEEP && closed.count(name) != 0) {
        setStatus(status, STATUS_EXISTS);
        return 0;
    }
    uint64_t const handle = nextHandle++;
    Pending& entry = pending[handle];
    entry.name = name;
    entry.output.encoderId = encoderId == nullptr ? std::wstring() : std::wstring(encoderId);
    entry.output.contentType = contentType;
    if (sizeHint > 0 && sizeHint < (uint64_t(1) << 30))
        entry.output.bytes.reserve(static_cast<size_t>(sizeHint));
    setStatus(status, 0);
    return handle;
}

kolt::Status MemoryOutputCallbacks::write(uint64_t handle, void const* data, size_t size) {
    std::lock_guard<std::mutex> lock(mutex);
    auto it = pending.find(handle);
    if (it == pending.end())
        return STATUS_BAD_HANDLE;
    if (size == 0)
        return 0;
    if (data == nullptr)
        return 1;
    Pending& entry = it->second;
    auto& bytes = entry.output.bytes;
    if (entry.position > MAX_BYTES || size > MAX_BYTES - entry.position)
        return STATUS_IO;
    size_t const end = static_cast<size_t>(entry.position) + size;
    try {
        if (bytes.size() < end)
            bytes.resize(end, 0);
    } catch (std::exception const&) {
        return STATUS_IO; // a position far beyond what memory holds
    }
    std::memcpy(bytes.data() + entry.position, data, size);
    entry.position = end;
    return 0;
}

kolt::Status MemoryOutputCallbacks::seek(uint64_t handle, int64_t offset, int32_t direction) {
    std::lock_guard<std::mutex> lock(mutex);
    auto it = pending.find(handle);
    if (it == pending.end())
        return STATUS_BAD_HANDLE;
    Pending& entry = it->second;
    int64_t base;
    switch (direction) {
    case FROM_BEGIN:
        base = 0;
        break;
    case FROM_CURRENT:
        base = static_cast<int64_t>(entry.position);
        break;
    case FROM_END:
        base = static_cast<int64_t>(entry.output.bytes.size());
        break;
    default:
        return 1;
    }
    if (base + offset < 0)
        return 1;
    entry.position = static_cast<uint64_t>(base + offset);
    return 0;
}

uint64_t MemoryOutputCallbacks::tell(uint64_t handle, kolt::Status* status) {
    std::lock_guard<std::mutex> lock(mutex);
    auto it = pending.find(handle);
    if (it == pending.end()) {
        setStatus(status, STATUS_BAD_HANDLE);
        return 0;
    }
    setStatus(status, 0);
    return it->second.position;
}

kolt::Status MemoryOutputCallbacks::close(uint64_t handle, bool discard, uint64_t* size) {
    std::lock_guard<std::mutex> lock(mutex);
    auto it = pending.find(handle);
    if (it == pending.end())
        return STATUS_BAD_HANDLE;
    if (size != nullptr)
        *size = it->second.output.bytes.size();
    if (!discard)
        closed[it->second.name] = std::move(it->second.output);
    pending.erase(it);
    return 0;
}

std::vector<std::wstring> MemoryOutputCallbacks::getNames() const {
    std::lock_guard<std::mutex> lock(mutex);
    std::vector<std::wstring> names;
    for (auto const& entry : closed)
        names.push_back(entry.first);
    return names;
}

MemoryOutputCallbacks::Output const* MemoryOutputCallbacks::find(std::wstring const& name) const {
    std::lock_guard<std::mutex> lock(mutex);
    auto it = closed.find(name);
    return it == closed.end() ? nullptr : &it->second;
}

std::string MemoryOutputCallbacks::getText(std::wstring const& name) const {
    std::lock_guard<std::mutex> lock(mutex);
    auto const& bytes = closed.at(name).bytes;
    return std::string(bytes.begin(), bytes.end());
}

size_t MemoryOutputCallbacks::getOpenCount() const {
    std::lock_guard<std::mutex> lock(mutex);
    return pending.size();
}

} // namespace koltx
