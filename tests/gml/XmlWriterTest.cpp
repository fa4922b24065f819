#include "gml/XmlWriter.h"
#include "gml/NumberFormat.h"
#include "gml/TextConversion.h"

#include <Files.h>
#include <TestData.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <sstream>
#include <stdexcept>

namespace {

using gml::XmlWriter;

// A decimal, 0x and the bits of a double, or "float" and a decimal to round to float first.
double valueOf(std::string const& text) {
    if (text.rfind("0x", 0) == 0) {
        std::uint64_t const bits = std::stoull(text, nullptr, 16);
        double value = 0.0;
        std::memcpy(&value, &bits, sizeof value);
        return value;
    }
    if (text.rfind("float", 0) == 0)
        return static_cast<double>(std::stof(text.substr(5)));
    return std::stod(text);
}

TEST(XmlWriterTest, MisuseFailsWithAnError) {
    std::ostringstream out;
    XmlWriter writer(out, 3, 3);
    EXPECT_THROW(writer.endElement(), std::logic_error);
    EXPECT_THROW(writer.writeColorElement(L"a:c", {1.0, 0.5}), std::invalid_argument);
    EXPECT_EQ(out.str(), "");
}

TEST(XmlWriterTest, ANulEndsTheText) {
    // A NUL inside a text ends it, with or without other non-ASCII units.
    EXPECT_EQ(gml::toUtf8(std::wstring(L"ab\0cd", 5)), "ab");
    EXPECT_EQ(gml::toUtf8(std::wstring(L"\u00e9\0cd", 4)), "\xc3\xa9");
    EXPECT_EQ(gml::toUtf8(L""), "");
    // Appending narrows ASCII in blocks of 16; a stop inside or after a block.
    std::string const head(20, 'x');
    std::wstring const wideHead(20, L'x');
    for (auto const& [text, expected] : std::vector<std::pair<std::wstring, std::string>>{
             {wideHead + L"\u00e9y", head + "\xc3\xa9y"},
             {wideHead + std::wstring(L"\0cd", 3), head},
             {L"0123456789abcde\u6771", "0123456789abcde\xe6\x9d\xb1"},
             {wideHead + wideHead, head + head}}) {
        std::string out = "<";
        gml::appendUtf8(out, text);
        EXPECT_EQ(out, "<" + expected);
    }
}

TEST(XmlWriterTest, NumberFormTable) {
    int rows = 0;
    for (auto const& line : testsupport::tableRows(testsupport::dataFile("gml/number_forms.txt"))) {
        auto const field = testsupport::split(line, " | ");
        double const value = valueOf(field.at(1));
        std::string const text =
            field.at(0) == "coordinate" ? gml::coordinateForm(value, std::stoi(field.at(2)))
            : field.at(0) == "stream"   ? gml::streamForm(value)
            : field.at(0) == "scalar"   ? gml::scalarForm(value)
            : field.at(0) == "integer"  ? gml::integerForm(static_cast<std::int64_t>(value))
                                        : std::to_string(gml::coordinatePrecisionFor(value));
        EXPECT_EQ(text, field.at(3)) << line;
        ++rows;
    }
    EXPECT_GT(rows, 60);
}

TEST(XmlWriterTest, CoordinateFormLimits) {
    // The longest finite value fills the buffer exactly at precision 10.
    const std::string longest = gml::coordinateForm(-std::numeric_limits<double>::max(), 10);
    EXPECT_EQ(longest.size(), gml::coordinateBufferSize);
    EXPECT_EQ(longest.substr(0, 5), "-1797");
    // A precision that can't fit fails with the fixed text.
    try {
        gml::coordinateForm(1.0, 1000000000);
        FAIL() << "no exception";
    } catch (std::runtime_error const& error) {
        EXPECT_STREQ(error.what(), "Failed to convert coordinate to string.");
    }
    EXPECT_THROW(gml::coordinateForm(1e300, 100), std::runtime_error);
}

TEST(XmlWriterTest, FailingCoordinateLeavesEarlierValuesWritten) {
    std::ostringstream out;
    XmlWriter writer(out, 3, 100);
    EXPECT_THROW(writer.writeCoordinates(std::vector<double>{1.0, 1e300, 2.0}), std::runtime_error);
    EXPECT_EQ(out.str().substr(0, 5), "1.000");
    EXPECT_EQ(out.str().back(), ' ');
    EXPECT_EQ(out.str().find("2.0"), std::string::npos);
}

// A target that takes `room` bytes and then fails, or throws where `throws` is set.
class LimitedBuf : public std::streambuf {
public:
    LimitedBuf(std::size_t room, bool throws) : room(room), throws(throws) {}
    std::string taken;

protected:
    int_type overflow(int_type c) override {
        if (taken.size() >= room) {
            if (throws)
                throw std::runtime_error("target gone");
            return traits_type::eof();
        }
        taken += traits_type::to_char_type(c);
        return c;
    }

private:
    std::size_t room;
    bool throws;
};

// A target that fails leaves the stream bad and takes nothing more, also when it throws; the
// writer's own caller learns of it from the stream alone.
TEST(XmlWriterTest, AFailingTargetEndsTheOutput) {
    auto start = [](XmlWriter& writer) {
        writer.startElement(L"core:CityModel");
        writer.writeTextElement(L"gml:name", L"n");
    };
    std::ostringstream whole;
    XmlWriter complete(whole, 3, 3);
    start(complete);
    for (bool const throws : {false, true}) {
        LimitedBuf target(12, throws);
        std::ostream out(&target);
        XmlWriter writer(out, 3, 3);
        start(writer);
        EXPECT_TRUE(out.bad()) << throws;
        std::string const taken = target.taken;
        EXPECT_EQ(taken, whole.str().substr(0, 12)) << throws;
        EXPECT_NO_THROW(writer.writeCoordinates(std::vector<double>{1.0, 2.0}));
        writer.endElement();
        EXPECT_EQ(target.taken, taken) << throws;
    }
}

} // namespace
