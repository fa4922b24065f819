#pragma once

#include "koltx/LogSink.h"

namespace koltx {

// The default sink: one line per entry on stderr, prefixed with the level's name.
class StderrLogSink : public LogSink {
public:
    ~StderrLogSink() override;
    void write(kolt::LogLevel level, std::string const& message) override;
};

} // namespace koltx
