#pragma once

#include "kolt/LogLevel.h"

#include <exception>
#include <sstream>
#include <string>

namespace koltx {

// Builds one log entry and writes it to the process-wide log when destroyed.
//
// Forms: (level, text, exception) gives text followed by the exception's what(); (level, text,
// suffix) gives text followed by suffix (null counts as empty); (level, format) is printf-like:
// each "%s" (or "%d", "%f", ...) is replaced by the next value given with operator%, "%%" is a
// percent sign. Wide strings are converted to UTF-8.
class LogFormatter {
public:
    LogFormatter(kolt::LogLevel level, std::string const& text, std::exception const& exception);
    LogFormatter(kolt::LogLevel level, char const* text, char const* suffix);
    LogFormatter(kolt::LogLevel level, char const* format);
    LogFormatter(LogFormatter const&) = delete;
    LogFormatter& operator=(LogFormatter const&) = delete;
    ~LogFormatter();

    LogFormatter& operator%(char const* value);
    LogFormatter& operator%(std::string const& value);
    LogFormatter& operator%(wchar_t const* value);
    LogFormatter& operator%(std::wstring const& value);
    template <typename T> LogFormatter& operator%(T const& value) {
        std::ostringstream stream;
        stream << value;
        return argument(stream.str());
    }

    // False when an entry of this level would be dropped anyway.
    static bool isLogged(kolt::LogLevel level);

    // The text as it stands, the rest of the format included.
    std::string getText() const;
    kolt::LogLevel getLevel() const { return level; }

private:
    LogFormatter& argument(std::string const& value);
    void advance();

    kolt::LogLevel level;
    std::string text;
    std::string pendingFormat;
};

} // namespace koltx
