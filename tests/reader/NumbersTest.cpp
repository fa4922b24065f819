// Number reading: the decimal shortcut must give the very bits std::from_chars gives.
#include "Numbers.h"

#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <cstring>
#include <random>
#include <string>
#include <vector>

namespace {

using citygml::Numbers;

double reference(std::string const& s) {
    double v = 0;
    std::string_view t(s);
    if (!t.empty() && t.front() == '+')
        t.remove_prefix(1);
    auto [p, ec] = std::from_chars(t.data(), t.data() + t.size(), v);
    EXPECT_TRUE(ec == std::errc() && p == t.data() + t.size()) << s;
    return v;
}

void expectSameBits(std::string const& s) {
    double got = 0;
    ASSERT_TRUE(Numbers::parseOne(s, got)) << s;
    double want = reference(s);
    EXPECT_EQ(0, std::memcmp(&got, &want, sizeof got)) << s << ": " << got << " vs " << want;
}

TEST(Numbers, DecimalsMatchFromCharsBitForBit) {
    for (char const* s : {"0",
                          "-0",
                          "-0.0",
                          "0.1",
                          "1.",
                          ".5",
                          "+3.25",
                          "5819540.853",
                          "-12.5e3",
                          "1e22",
                          "1e-22",
                          "9007199254740992",
                          "9007199254740993",
                          "123456789012345678901234567890",
                          "1e23",
                          "4.9406564584124654e-324",
                          "1.7976931348623157e308",
                          "0.30000000000000004",
                          "2.2250738585072014e-308",
                          "1E+2",
                          "7e-0"})
        expectSameBits(s);

    std::mt19937_64 random(20261121);
    for (int i = 0; i < 200000; ++i) {
        std::string s;
        if (random() % 4 == 0)
            s += '-';
        int whole = static_cast<int>(random() % 12);
        for (int k = 0; k < whole; ++k)
            s += static_cast<char>('0' + random() % 10);
        int fraction = static_cast<int>(random() % 12);
        if (whole == 0 && fraction == 0)
            whole = 1, s += '7';
        if (fraction > 0) {
            s += '.';
            for (int k = 0; k < fraction; ++k)
                s += static_cast<char>('0' + random() % 10);
        }
        if (random() % 5 == 0)
            s += "e" + std::to_string(static_cast<int>(random() % 61) - 30);
        expectSameBits(s);
    }
}

TEST(Numbers, RejectsWhatIsNotOneNumber) {
    double v = 0;
    for (char const* s :
         {"", "-", ".", "e5", "1e", "1e+", "1.2.3", "--1", "1,5", "0x10", "12a", "+"})
        EXPECT_FALSE(Numbers::parseOne(s, v)) << s;
    EXPECT_TRUE(Numbers::parseOne("inf", v));
    EXPECT_TRUE(std::isinf(v));

    std::vector<double> out;
    EXPECT_TRUE(Numbers::parseList("  1 2.5\n\t-3e1  ", out));
    EXPECT_EQ(out, (std::vector<double>{1, 2.5, -30}));
    EXPECT_FALSE(Numbers::parseList("4 five 6", out));
    EXPECT_EQ(out.back(), 4);
}

} // namespace
