#include "gml/XmlWriter.h"
#include "gml/NumberFormat.h"
#include "gml/TextConversion.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <sstream>
#include <stdexcept>

namespace {

using gml::XmlWriter;

double fromBits(std::uint64_t bits) {
    double value = 0.0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
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
}

TEST(XmlWriterTest, CoordinateFormTables) {
    struct Row {
        double value;
        char const* p3;
        char const* p0;
        char const* p10;
    };
    const Row rows[] = {
        {0.1, "0.100", "0", "0.1000000000"},
        {0.0005, "0.001", "0", "0.0005000000"},
        {1234.5678, "1234.568", "1235", "1234.5678000000"},
        {2.5, "2.500", "2", "2.5000000000"},
        {3.5, "3.500", "4", "3.5000000000"},
        {1e-7, "0.000", "0", "0.0000001000"},
        {-1e-7, "-0.000", "-0", "-0.0000001000"},
        {-0.0, "-0.000", "-0", "-0.0000000000"},
        {0.0, "0.000", "0", "0.0000000000"},
        {1e21, "1000000000000000000000.000", "1000000000000000000000",
         "1000000000000000000000.0000000000"},
        {1e23, "99999999999999991611392.000", "99999999999999991611392",
         "99999999999999991611392.0000000000"},
    };
    for (Row const& row : rows) {
        EXPECT_EQ(gml::coordinateForm(row.value, 3), row.p3) << row.value;
        EXPECT_EQ(gml::coordinateForm(row.value, 0), row.p0) << row.value;
        EXPECT_EQ(gml::coordinateForm(row.value, 10), row.p10) << row.value;
    }
    // The longest finite value fills the buffer exactly at precision 10.
    const std::string longest = gml::coordinateForm(-std::numeric_limits<double>::max(), 10);
    EXPECT_EQ(longest.size(), gml::coordinateBufferSize);
    EXPECT_EQ(longest.substr(0, 5), "-1797");
    // A negative precision means 6; one that can't fit fails with the fixed text.
    EXPECT_EQ(gml::coordinateForm(0.5, -1), "0.500000");
    try {
        gml::coordinateForm(1.0, 1000000000);
        FAIL() << "no exception";
    } catch (std::runtime_error const& error) {
        EXPECT_STREQ(error.what(), "Failed to convert coordinate to string.");
    }
    EXPECT_THROW(gml::coordinateForm(1e300, 100), std::runtime_error);
}

TEST(XmlWriterTest, NonFiniteCoordinatesHaveFixedTexts) {
    double const inf = std::numeric_limits<double>::infinity();
    EXPECT_EQ(gml::coordinateForm(inf, 3), "inf");
    EXPECT_EQ(gml::coordinateForm(-inf, 3), "-inf");
    EXPECT_EQ(gml::coordinateForm(fromBits(0x7FF8000000000000ull), 3), "nan");
    EXPECT_EQ(gml::coordinateForm(fromBits(0xFFF8000000000000ull), 3), "-nan(ind)");
    EXPECT_EQ(gml::coordinateForm(fromBits(0x7FF8000000000001ull), 3), "nan");
    EXPECT_EQ(gml::coordinateForm(fromBits(0xFFF8000000000001ull), 3), "-nan");
    EXPECT_EQ(gml::coordinateForm(fromBits(0x7FF0000000000001ull), 0), "nan(snan)");
    EXPECT_EQ(gml::coordinateForm(fromBits(0xFFF4000000000000ull), 10), "-nan(snan)");
}

TEST(XmlWriterTest, FailingCoordinateLeavesEarlierValuesWritten) {
    std::ostringstream out;
    XmlWriter writer(out, 3, 100);
    EXPECT_THROW(writer.writeCoordinates(std::vector<double>{1.0, 1e300, 2.0}), std::runtime_error);
    EXPECT_EQ(out.str().substr(0, 5), "1.000");
    EXPECT_EQ(out.str().back(), ' ');
    EXPECT_EQ(out.str().find("2.0"), std::string::npos);
}

TEST(XmlWriterTest, StreamScalarAndIntegerForms) {
    std::pair<double, char const*> const stream[] = {
        {0.1, "0.1"}, {1e21, "1e+21"},           {-0.0, "-0"},       {1.0, "1"},
        {0.8, "0.8"}, {0.123456789, "0.123457"}, {0.00001, "1e-05"}, {123456789.0, "1.23457e+08"}};
    for (auto const& [value, text] : stream)
        EXPECT_EQ(gml::streamForm(value), text);
    std::pair<double, char const*> const scalar[] = {
        {0.1, "0.100000"},       {1e21, "1000000000000000000000.000000"},
        {-0.0, "-0.000000"},     {static_cast<double>(0.1f), "0.100000"},
        {0.1234567, "0.123457"}, {std::numeric_limits<double>::infinity(), "inf"}};
    for (auto const& [value, text] : scalar)
        EXPECT_EQ(gml::scalarForm(value), text);
    for (int value : {-7, 0, 2147483647})
        EXPECT_EQ(gml::integerForm(value), std::to_string(value));
}

TEST(XmlWriterTest, CoordinatePrecisionFromVertexPrecision) {
    const std::pair<double, int> rows[] = {{1.0, 0},    {0.5, 1},   {0.1, 1},
                                           {0.05, 2},   {0.02, 2},  {0.01, 2},
                                           {0.0015, 3}, {0.001, 3}, {1e-10, 10}};
    for (auto const& [vertexPrecision, digits] : rows)
        EXPECT_EQ(gml::coordinatePrecisionFor(vertexPrecision), digits) << vertexPrecision;
}

} // namespace
