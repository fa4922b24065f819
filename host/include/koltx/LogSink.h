#pragma once

#include "kolt/LogLevel.h"

#include <memory>
#include <string>

namespace koltx {

// Receiver of finished log lines (UTF-8, without line end).
class LogSink {
public:
    virtual ~LogSink();
    virtual void write(kolt::LogLevel level, std::string const& message) = 0;
};

using LogSinkPtr = std::shared_ptr<LogSink>;

} // namespace koltx
