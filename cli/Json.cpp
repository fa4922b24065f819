#include "Json.h"

#include <charconv>
#include <cmath>
#include <cstdio>

std::string Json::quote(std::string const& utf8) {
    std::string out;
    out.reserve(utf8.size() + 2);
    out.push_back('"');
    for (char c : utf8) {
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
        default:
            if (static_cast<unsigned char>(c) < 0x20) {
                char escaped[8];
                std::snprintf(escaped, sizeof escaped, "\\u%04x", static_cast<unsigned>(c));
                out += escaped;
            } else {
                out.push_back(c);
            }
        }
    }
    out.push_back('"');
    return out;
}

std::string Json::number(double value) {
    if (!std::isfinite(value))
        return "null";
    char text[32];
    auto const result = std::to_chars(text, text + sizeof text, value);
    return std::string(text, result.ptr);
}
