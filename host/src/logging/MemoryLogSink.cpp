#include "koltx/MemoryLogSink.h"

namespace koltx {

MemoryLogSink::~MemoryLogSink() = default;

void MemoryLogSink::write(kolt::LogLevel level, std::string const& message) {
    std::lock_guard<std::mutex> lock(mutex);
    entries.emplace_back(level, message);
}

std::vector<MemoryLogSink::Entry> MemoryLogSink::getEntries() const {
    std::lock_guard<std::mutex> lock(mutex);
    return entries;
}

void MemoryLogSink::clear() {
    std::lock_guard<std::mutex> lock(mutex);
    entries.clear();
}

} // namespace koltx
