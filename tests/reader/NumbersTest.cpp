// Number reading: the decimal shortcut must give the very bits std::from_chars gives.
#include "Numbers.h"

#include <Files.h>
#include <TestData.h>
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

TEST(Numbers, TableAndRandomDecimalsMatchFromCharsBitForBit) {
    double v = 0;
    for (auto const& line : testsupport::tableRows(testsupport::dataFile("reader/numbers.txt"))) {
        auto const field = testsupport::split(line);
        if (field.at(0) == "same")
            expectSameBits(field.at(1));
        else
            EXPECT_FALSE(Numbers::parseOne(field.at(1), v)) << field.at(1);
    }
    EXPECT_FALSE(Numbers::parseOne("", v));

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

TEST(Numbers, InfinityAndLists) {
    double v = 0;
    EXPECT_TRUE(Numbers::parseOne("inf", v));
    EXPECT_TRUE(std::isinf(v));

    std::vector<double> out;
    EXPECT_TRUE(Numbers::parseList("  1 2.5\n\t-3e1  ", out));
    EXPECT_EQ(out, (std::vector<double>{1, 2.5, -30}));
    EXPECT_FALSE(Numbers::parseList("4 five 6", out));
    EXPECT_EQ(out.back(), 4);
}

} // namespace
