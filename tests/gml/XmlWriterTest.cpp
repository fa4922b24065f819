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

TEST(XmlWriterTest, WritesTheReferenceSequenceByteForByte) {
    std::ostringstream out;
    XmlWriter writer(out, 3, 1);
    writer.startElement(L"a:x", L"i1", {});
    writer.startElement(L"a:y", L"", {{L"k", L"v"}, {L"b", L"c"}});
    writer.writeTextElement(L"a:t", L"hi");
    writer.writeCoordinatesElement(L"a:p", {1, 2, 3, 4}, 2, {});
    writer.endElement();
    writer.endElement();
    EXPECT_EQ(out.str(), " <a:x gml:id=\"i1\">\n"
                         "  <a:y b=\"c\" k=\"v\">\n"
                         "  <a:t>hi</a:t>\n"
                         "  <a:p>\n"
                         "  1.0 2.0 3.0 4.0 1.0 2.0 </a:p>\n"
                         "  </a:y>\n"
                         " </a:x>\n");
    EXPECT_EQ(writer.depth, 0u);
    EXPECT_TRUE(writer.openTags.empty());
}

TEST(XmlWriterTest, EdgeCasesOfThePrimitives) {
    std::ostringstream out;
    XmlWriter writer(out, 2, 0);
    writer.depth = 2;
    EXPECT_EQ(writer.indentation(), "  ");
    // Empty text is never an empty-element tag; empty ids and values are written as they are.
    writer.writeTextElement(L"a:t", L"");
    writer.startElement(L"a:e", L"", {{L"b", L"1"}, {L"a", L"2"}});
    writer.writeCoordinatesElement(L"a:c", {}, 3, {});
    writer.writeCoordinatesElement(L"a:d", {1.25, 2}, 5, {{L"n", L"3"}});
    writer.writeCoordinatesElement(L"a:f", {12.4}, 0, {});
    writer.writeTextElement(L"a:u", L"<&\"");
    writer.writeColorElement(L"a:col", {1.0, 0.8, 0.123456789, 99});
    writer.writeTextElement(L"a:s", 0.1);
    writer.endElement();
    EXPECT_EQ(out.str(), "  <a:t></a:t>\n"
                         "   <a:e a=\"2\" b=\"1\">\n"
                         "   <a:c>\n"
                         "   </a:c>\n"
                         "   <a:d n=\"3\">\n"
                         "   1 2 1 2 </a:d>\n"
                         "   <a:f>\n"
                         "   12 </a:f>\n"
                         "   <a:u><&\"</a:u>\n"
                         "   <a:col>1 0.8 0.123457</a:col>\n"
                         "   <a:s>0.100000</a:s>\n"
                         "   </a:e>\n");
}

TEST(XmlWriterTest, MisuseFailsWithAnError) {
    std::ostringstream out;
    XmlWriter writer(out, 3, 3);
    EXPECT_THROW(writer.endElement(), std::logic_error);
    EXPECT_THROW(writer.writeColorElement(L"a:c", {1.0, 0.5}), std::invalid_argument);
    EXPECT_EQ(out.str(), "");
}

TEST(XmlWriterTest, ConvertsNonAsciiTextToUtf8) {
    std::ostringstream out;
    XmlWriter writer(out, 3, 3);
    writer.startElement(L"a:stra\u00dfe", L"\u6771", {{L"n", L"\u00e9"}});
    writer.writeTextElement(L"a:t", L"\U0001F600");
    writer.endElement();
    EXPECT_EQ(out.str(), " <a:stra\xc3\x9f"
                         "e gml:id=\"\xe6\x9d\xb1\" n=\"\xc3\xa9\">\n"
                         " <a:t>\xf0\x9f\x98\x80</a:t>\n"
                         " </a:stra\xc3\x9f"
                         "e>\n");
    // A NUL inside a text ends it, with or without other non-ASCII units.
    EXPECT_EQ(gml::toUtf8(std::wstring(L"ab\0cd", 5)), "ab");
    EXPECT_EQ(gml::toUtf8(std::wstring(L"\u00e9\0cd", 4)), "\xc3\xa9");
    EXPECT_EQ(gml::toUtf8(L""), "");
}

TEST(XmlWriterTest, CoordinateFormTables) {
    struct Row {
        double value;
        const char* p3;
        const char* p0;
        const char* p10;
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
    for (const Row& row : rows) {
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
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "Failed to convert coordinate to string.");
    }
    EXPECT_THROW(gml::coordinateForm(1e300, 100), std::runtime_error);
}

TEST(XmlWriterTest, NonFiniteCoordinatesHaveFixedTexts) {
    const double inf = std::numeric_limits<double>::infinity();
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
    EXPECT_EQ(gml::streamForm(0.1), "0.1");
    EXPECT_EQ(gml::streamForm(1e21), "1e+21");
    EXPECT_EQ(gml::streamForm(-0.0), "-0");
    EXPECT_EQ(gml::streamForm(1.0), "1");
    EXPECT_EQ(gml::streamForm(0.8), "0.8");
    EXPECT_EQ(gml::streamForm(0.123456789), "0.123457");
    EXPECT_EQ(gml::streamForm(0.00001), "1e-05");
    EXPECT_EQ(gml::streamForm(123456789.0), "1.23457e+08");
    EXPECT_EQ(gml::scalarForm(0.1), "0.100000");
    EXPECT_EQ(gml::scalarForm(1e21), "1000000000000000000000.000000");
    EXPECT_EQ(gml::scalarForm(-0.0), "-0.000000");
    EXPECT_EQ(gml::scalarForm(static_cast<double>(0.1f)), "0.100000");
    EXPECT_EQ(gml::scalarForm(static_cast<double>(1.0f)), "1.000000");
    EXPECT_EQ(gml::scalarForm(0.1234567), "0.123457");
    EXPECT_EQ(gml::scalarForm(std::numeric_limits<double>::infinity()), "inf");
    EXPECT_EQ(gml::integerForm(-7), "-7");
    EXPECT_EQ(gml::integerForm(0), "0");
    EXPECT_EQ(gml::integerForm(2147483647), "2147483647");
}

TEST(XmlWriterTest, CoordinatePrecisionFromVertexPrecision) {
    const std::pair<double, int> rows[] = {{1.0, 0},    {0.5, 1},   {0.1, 1},
                                           {0.05, 2},   {0.02, 2},  {0.01, 2},
                                           {0.0015, 3}, {0.001, 3}, {1e-10, 10}};
    for (const auto& [vertexPrecision, digits] : rows)
        EXPECT_EQ(gml::coordinatePrecisionFor(vertexPrecision), digits) << vertexPrecision;
}

} // namespace
