#include "koltx/LogFormatter.h"

#include "kolt/StringUtils.h"
#include "koltx/Log.h"

namespace koltx {

LogFormatter::LogFormatter(kolt::LogLevel level, std::string const& text,
                           std::exception const& exception)
    : level(level), text(text + exception.what()) {}

LogFormatter::LogFormatter(kolt::LogLevel level, char const* text, char const* suffix)
    : level(level), text(text != nullptr ? text : "") {
    if (suffix != nullptr)
        this->text += suffix;
}

LogFormatter::LogFormatter(kolt::LogLevel level, char const* format)
    : level(level), pendingFormat(format != nullptr ? format : "") {
    advance();
}

LogFormatter::~LogFormatter() {
    try {
        Log::write(level, getText());
    } catch (...) {
        // A log line is never worth an exception out of a destructor.
    }
}

bool LogFormatter::isLogged(kolt::LogLevel level) {
    return Log::isEnabled(level);
}

std::string LogFormatter::getText() const {
    std::string result = text;
    // The rest of the format, with "%%" as one percent sign and unfilled placeholders kept.
    for (size_t i = 0; i < pendingFormat.size(); ++i) {
        if (pendingFormat[i] == '%' && i + 1 < pendingFormat.size() && pendingFormat[i + 1] == '%')
            ++i;
        result += pendingFormat[i];
    }
    return result;
}

LogFormatter& LogFormatter::operator%(char const* value) {
    return argument(value != nullptr ? value : "(null)");
}

LogFormatter& LogFormatter::operator%(std::string const& value) {
    return argument(value);
}

LogFormatter& LogFormatter::operator%(wchar_t const* value) {
    return argument(value != nullptr ? kolt::StringUtils::toUTF8(value) : "(null)");
}

LogFormatter& LogFormatter::operator%(std::wstring const& value) {
    return argument(kolt::StringUtils::toUTF8(value));
}

// Puts `value` in place of the placeholder that the format stands at; a value without a
// placeholder is appended, so that nothing is lost.
LogFormatter& LogFormatter::argument(std::string const& value) {
    if (pendingFormat.empty() || pendingFormat[0] != '%') {
        text += " " + value;
        return *this;
    }
    text += value;
    // Skip the conversion: flags, width, precision, length and the conversion letter.
    size_t pos = 1;
    while (pos < pendingFormat.size() &&
           std::string("-+ #0123456789.hlLqjzt").find(pendingFormat[pos]) != std::string::npos)
        ++pos;
    if (pos < pendingFormat.size())
        ++pos;
    pendingFormat.erase(0, pos);
    advance();
    return *this;
}

// Copies the format's literal text up to the next placeholder.
void LogFormatter::advance() {
    size_t pos = 0;
    while (pos < pendingFormat.size()) {
        if (pendingFormat[pos] == '%') {
            if (pos + 1 < pendingFormat.size() && pendingFormat[pos + 1] == '%') {
                text += '%';
                pos += 2;
                continue;
            }
            break;
        }
        text += pendingFormat[pos++];
    }
    pendingFormat.erase(0, pos);
}

} // namespace koltx
