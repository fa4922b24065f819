#pragma once

#include "kolt/LogLevel.h"
#include "koltx/LogSink.h"

#include <string>

namespace koltx {

// The process-wide log: entries at or above the threshold go to the installed sink.
class Log {
public:
    // Installs `sink` (null restores stderr) and returns the previous one.
    static LogSinkPtr setSink(LogSinkPtr sink);
    static LogSinkPtr getSink();
    static void setThreshold(kolt::LogLevel level);
    static kolt::LogLevel getThreshold();
    static bool isEnabled(kolt::LogLevel level);
    static void write(kolt::LogLevel level, std::string const& message);

    // Installs a sink and threshold for the life of the object, then puts the old ones back.
    class Scope {
    public:
        Scope(LogSinkPtr sink, kolt::LogLevel threshold);
        Scope(Scope const&) = delete;
        Scope& operator=(Scope const&) = delete;
        ~Scope();

    private:
        LogSinkPtr previousSink;
        kolt::LogLevel previousThreshold;
    };
};

} // namespace koltx
