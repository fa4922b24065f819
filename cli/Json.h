#pragma once

#include <string>

// Text forms of JSON values.
class Json {
public:
    // A JSON string literal: quotes, backslashes and control characters escaped, other UTF-8
    // passed through.
    static std::string quote(std::string const& utf8);
    // The same, appended to `out`.
    static void appendQuoted(std::string& out, std::string const& utf8);
    // The shortest text that reads back as the same double; null for NaN and infinities.
    static std::string number(double value);
};
