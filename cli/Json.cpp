#include "Json.h"

#include <charconv>
#include <cmath>
#include <cstdio>

std::string Json::quote(std::string const& utf8) {
    std::string out;
    out.reserve(utf8.size() + 2);
    appendQuoted(out, utf8);
    return out;
}

void Json::appendQuoted(std::string& out, std::string const& utf8) {
    out.push_back('"');
    std::size_t plain = 0; // start of the run of characters that need no escape
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        unsigned char const c = static_cast<unsigned char>(utf8[i]);
        if (c >= 0x20 && c != '"' && c != '\\')
            continue;
        out.append(utf8, plain, i - plain);
        plain = i + 1;
        switch (c) {
        case '"':
            out += "\\\"";
            break;
        case '\\':
            out += "\\\\";
            break;
        case '\n':
            out += "\\n";
            break;
        case '\r':
            out += "\\r";
            break;
        case '\t':
            out += "\\t";
            break;
        case '\b':
            out += "\\b";
            break;
        case '\f':
            out += "\\f";
            break;
        default: {
            char escaped[8];
            std::snprintf(escaped, sizeof escaped, "\\u%04x", static_cast<unsigned>(c));
            out += escaped;
        }
        }
    }
    out.append(utf8, plain, std::string::npos);
    out.push_back('"');
}

std::string Json::number(double value) {
    if (!std::isfinite(value))
        return "null";
    char text[32];
    auto const result = std::to_chars(text, text + sizeof text, value);
    return std::string(text, result.ptr);
}
