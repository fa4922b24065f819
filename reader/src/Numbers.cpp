#include "Numbers.h"

#include <charconv>
#include <cstdint>
#include <string>

namespace citygml {

namespace {

bool isSpace(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

// Plain decimals such as "5819540.853" are read exactly without from_chars: with at most 2^53
// as the digits' integer and a power of ten up to 22, one multiplication or division is
// correctly rounded. Anything else (more digits, big exponents, inf, nan) is left to from_chars.
// Gives the end of the number read, or null when from_chars has to decide.
char const* fastDecimal(char const* p, char const* end, double& value) {
    static constexpr double powers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                        1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                        1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
    constexpr std::uint64_t limit = std::uint64_t(1) << 53;
    bool negative = p != end && *p == '-';
    if (negative)
        ++p;
    std::uint64_t digits = 0;
    int exponent = 0;
    bool any = false;
    for (; p != end && static_cast<unsigned>(*p - '0') < 10; ++p, any = true) {
        digits = digits * 10 + static_cast<unsigned>(*p - '0');
        if (digits > limit)
            return nullptr;
    }
    if (p != end && *p == '.') {
        for (++p; p != end && static_cast<unsigned>(*p - '0') < 10; ++p, any = true) {
            digits = digits * 10 + static_cast<unsigned>(*p - '0');
            --exponent;
            if (digits > limit)
                return nullptr;
        }
    }
    if (!any)
        return nullptr;
    if (p != end && (*p == 'e' || *p == 'E')) {
        ++p;
        bool negativeExponent = p != end && *p == '-';
        if (p != end && (*p == '-' || *p == '+'))
            ++p;
        int e = 0;
        bool anyExponent = false;
        for (; p != end && static_cast<unsigned>(*p - '0') < 10; ++p, anyExponent = true)
            if ((e = e * 10 + (*p - '0')) > 1000)
                return nullptr;
        if (!anyExponent)
            return nullptr;
        exponent += negativeExponent ? -e : e;
    }
    if (exponent < -22 || exponent > 22)
        return nullptr;
    double v = static_cast<double>(digits);
    v = exponent < 0 ? v / powers[-exponent] : v * powers[exponent];
    value = negative ? -v : v;
    return p;
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
    char const* end = token.data() + token.size();
    if (fastDecimal(token.data(), end, value) == end)
        return true;
    auto [p, ec] = std::from_chars(token.data(), token.data() + token.size(), value);
    return ec == std::errc() && p == token.data() + token.size();
}

bool Numbers::outOfRange(std::string_view token) {
    if (!token.empty() && token.front() == '+')
        token.remove_prefix(1);
    double v = 0;
    auto [p, ec] = std::from_chars(token.data(), token.data() + token.size(), v);
    return ec == std::errc::result_out_of_range && p == token.data() + token.size();
}

bool Numbers::parseList(std::string_view text, std::vector<double>& out, std::string_view* bad) {
    std::size_t i = 0;
    std::size_t const n = text.size();
    while (true) {
        while (i < n && isSpace(text[i]))
            ++i;
        if (i == n)
            return true;
        // Most numbers are plain decimals, read in one pass; the rest go the long way.
        double v = 0;
        char const* end = text.data() + n;
        char const* stop = fastDecimal(text.data() + i, end, v);
        if (stop && (stop == end || isSpace(*stop))) {
            i = static_cast<std::size_t>(stop - text.data());
            out.push_back(v);
            continue;
        }
        std::size_t start = i;
        while (i < n && !isSpace(text[i]))
            ++i;
        if (!parseOne(text.substr(start, i - start), v)) {
            if (bad)
                *bad = text.substr(start, i - start);
            return false;
        }
        out.push_back(v);
    }
}

bool Numbers::parseCoordinates(std::string_view text, char cs, char ts, char decimal,
                               std::vector<double>& out, int& dimension, std::string_view* bad) {
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
            if (!parseOne(token, v)) {
                if (bad)
                    *bad = text.substr(start, i - start);
                return false;
            }
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
