#include "koltx/StderrLogSink.h"

#include <cstdio>

namespace koltx {

namespace {

char const* levelName(kolt::LogLevel level) {
    switch (level) {
    case kolt::LOG_TRACE:
        return "trace";
    case kolt::LOG_DEBUG:
        return "debug";
    case kolt::LOG_INFO:
        return "info";
    case kolt::LOG_WARNING:
        return "warning";
    case kolt::LOG_ERROR:
        return "error";
    case kolt::LOG_FATAL:
        return "fatal";
    }
    return "log";
}

} // namespace

StderrLogSink::~StderrLogSink() = default;

void StderrLogSink::write(kolt::LogLevel level, std::string const& message) {
    // One call per line, so that lines of several threads don't interleave.
    std::string const line = std::string("[") + levelName(level) + "] " + message + "\n";
    std::fwrite(line.data(), 1, line.size(), stderr);
}

} // namespace koltx
