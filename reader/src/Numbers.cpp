#include "Numbers.h"

#include <charconv>
#include <string>

namespace citygml {

namespace {

bool isSpace(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

} // namespace

std::string_view Numbers::trim(std::string_view text) {
    while (!text.empty() && isSpace(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isSpace(text.back()))
        text.remove_suffix(1);
    return text;
}

bool Numbers::parseOne(std::string_view token, double& value) {
    if (!token.empty() && token.front() == '+')
        token.remove_prefix(1);
    if (token.empty())
        return false;
    auto [p, ec] = std::from_chars(token.data(), token.data() + token.size(), value);
    return ec == std::errc() && p == token.data() + token.size();
}

bool Numbers::parseList(std::string_view text, std::vector<double>& out) {
    std::size_t i = 0;
    std::size_t const n = text.size();
    while (true) {
        while (i < n && isSpace(text[i]))
            ++i;
        if (i == n)
            return true;
        std::size_t start = i;
        while (i < n && !isSpace(text[i]))
            ++i;
        double v = 0;
        if (!parseOne(text.substr(start, i - start), v))
            return false;
        out.push_back(v);
    }
}

bool Numbers::parseCoordinates(std::string_view text, char cs, char ts, char decimal,
                               std::vector<double>& out, int& dimension) {
    dimension = -1;
    std::string token;
    std::size_t i = 0;
    std::size_t const n = text.size();
    auto tupleSep = [&](char c) { return c == ts || (ts == ' ' && isSpace(c)); };
    while (true) {
        while (i < n && (isSpace(text[i]) || tupleSep(text[i])))
            ++i;
        if (i == n)
            break;
        int count = 0;
        while (true) {
            std::size_t start = i;
            while (i < n && text[i] != cs && !tupleSep(text[i]) && !isSpace(text[i]))
                ++i;
            token.assign(text.substr(start, i - start));
            if (decimal != '.')
                for (char& c : token)
                    if (c == decimal)
                        c = '.';
            double v = 0;
            if (!parseOne(token, v))
                return false;
            out.push_back(v);
            ++count;
            if (i < n && text[i] == cs) {
                ++i;
                continue;
            }
            break;
        }
        dimension = dimension == -1 ? count : (dimension == count ? dimension : 0);
    }
    if (dimension == -1)
        dimension = 0;
    return true;
}

} // namespace citygml
