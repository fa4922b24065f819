#pragma once

#include "kolt/LogLevel.h"

#include <initializer_list>
#include <optional>

namespace koltx {

// Forwards to a formatter of the given level, skipping all work when the level is not logged.
// `Channel` names the part of the host that logs; entries of every channel go to the one sink.
// Use: LogFwd<1, 4, LogFormatter>("Encoder '%s': %s", id, what);
template <int Channel, int Level, typename Formatter> class LogFwd {
public:
    static constexpr int channel = Channel;

    template <typename... Args> explicit LogFwd(char const* format, Args const&... args) {
        if (!Formatter::isLogged(static_cast<kolt::LogLevel>(Level)))
            return;
        formatter.emplace(static_cast<kolt::LogLevel>(Level), format);
        (void)std::initializer_list<int>{((*formatter) % args, 0)...};
    }
    LogFwd(LogFwd const&) = delete;
    LogFwd& operator=(LogFwd const&) = delete;
    ~LogFwd() = default;

    template <typename T> LogFwd& operator%(T const& value) {
        if (formatter)
            (*formatter) % value;
        return *this;
    }

private:
    std::optional<Formatter> formatter;
};

} // namespace koltx
