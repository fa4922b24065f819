#pragma once

#include "koltx/LogSink.h"

#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace koltx {

// Keeps every entry in memory, for callers that show the log themselves and for tests.
class MemoryLogSink : public LogSink {
public:
    using Entry = std::pair<kolt::LogLevel, std::string>;

    ~MemoryLogSink() override;
    void write(kolt::LogLevel level, std::string const& message) override;

    std::vector<Entry> getEntries() const;
    void clear();

private:
    mutable std::mutex mutex;
    std::vector<Entry> entries;
};

} // namespace koltx
