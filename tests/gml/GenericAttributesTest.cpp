#include "gml/internal/GenericAttributes.h"
#include "gml/RootNode.h"
#include "gml/XmlWriter.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

std::string writeFeature(const gml::AttributeMap& attributes, int version) {
    gml::RootNode node(attributes, nullptr, L"f", false, L"x:F");
    std::ostringstream out;
    gml::XmlWriter writer(out, version, 3);
    writer.depth = 1;
    node.write(writer);
    return out.str();
}

TEST(GenericAttributesTest, ReferenceLinesInBothVersions) {
    const gml::AttributeMap attributes = {{L"floors", L"3"}, {L"g:x", L"y"}};
    EXPECT_EQ(writeFeature(attributes, 2), "  <x:F>\n"
                                           "   <gen:intAttribute name=\"floors\">\n"
                                           "   <gen:value>3</gen:value>\n"
                                           "   </gen:intAttribute>\n"
                                           "  <g:x>y</g:x>\n"
                                           "  </x:F>\n");
    EXPECT_EQ(writeFeature(attributes, 3), "  <x:F>\n"
                                           "   <core:genericAttribute>\n"
                                           "    <gen:IntAttribute>\n"
                                           "    <gen:name>floors</gen:name>\n"
                                           "    <gen:value>3</gen:value>\n"
                                           "    </gen:IntAttribute>\n"
                                           "   </core:genericAttribute>\n"
                                           "  <g:x>y</g:x>\n"
                                           "  </x:F>\n");
}

TEST(GenericAttributesTest, ValuesAreTypedByTheirLook) {
    struct Row {
        const wchar_t* value;
        const char* type;
        const char* text;
    };
    const Row rows[] = {
        {L"42", "int", "42"},
        {L"-7", "int", "-7"},
        {L" 42", "int", "42"},
        {L"007", "int", "7"},
        {L"+5", "int", "5"},
        {L"42 ", "string", "42 "},
        {L"2147483648", "double", "2147483648.000000"},
        {L"-2147483648", "int", "-2147483648"},
        {L"1.5", "double", "1.500000"},
        {L"3.000000", "double", "3.000000"},
        {L"0.1234567", "double", "0.123457"},
        {L"1e3", "double", "1000.000000"},
        {L"1e400", "string", "1e400"},
        {L"1e-400", "string", "1e-400"},
        {L"nan", "double", "nan"},
        {L"0x10", "double", "16.000000"},
        {L"true", "string", "true"},
        {L"false", "string", "false"},
        {L"", "string", ""},
        {L"a<b", "string", "a<b"},
    };
    for (const Row& row : rows) {
        const std::string text = writeFeature({{L"k", row.value}}, 2);
        const std::string expected =
            std::string("  <x:F>\n   <gen:") + row.type + "Attribute name=\"k\">\n   <gen:value>" +
            row.text + "</gen:value>\n   </gen:" + row.type + "Attribute>\n  </x:F>\n";
        EXPECT_EQ(text, expected) << row.text;
    }
    int integer = 0;
    EXPECT_FALSE(gml::tryParseInt(std::wstring(L"4\0"
                                               L"2",
                                               3),
                                  integer));
    double number = 0;
    EXPECT_TRUE(gml::tryParseDouble(L"-0.5", number));
    EXPECT_EQ(number, -0.5);
    EXPECT_FALSE(gml::tryParseDouble(L"", number));
}

TEST(GenericAttributesTest, OrderAndQualifiedNames) {
    // Qualified names are never parsed; names go in code-unit order; an empty name is generic.
    const gml::AttributeMap attributes = {
        {L"b", L"x"}, {L"a", L"x"}, {L"bldg:storeysAboveGround", L"042"}, {L"", L"v"}};
    EXPECT_EQ(writeFeature(attributes, 2),
              "  <x:F>\n"
              "   <gen:stringAttribute name=\"\">\n"
              "   <gen:value>v</gen:value>\n"
              "   </gen:stringAttribute>\n"
              "   <gen:stringAttribute name=\"a\">\n"
              "   <gen:value>x</gen:value>\n"
              "   </gen:stringAttribute>\n"
              "   <gen:stringAttribute name=\"b\">\n"
              "   <gen:value>x</gen:value>\n"
              "   </gen:stringAttribute>\n"
              "  <bldg:storeysAboveGround>042</bldg:storeysAboveGround>\n"
              "  </x:F>\n");
    const std::string modern = writeFeature({{L"d", L"2.5"}, {L"s", L"text"}}, 3);
    EXPECT_NE(modern.find("    <gen:DoubleAttribute>\n"
                          "    <gen:name>d</gen:name>\n"
                          "    <gen:value>2.500000</gen:value>\n"),
              std::string::npos);
    EXPECT_NE(modern.find("    <gen:StringAttribute>\n"
                          "    <gen:name>s</gen:name>\n"),
              std::string::npos);
}

TEST(GenericAttributesTest, AttributesStandBeforeSortedChildren) {
    gml::RootNode node({{L"z", L"1"}}, nullptr, L"f", false, L"x:F");
    node.addChild(std::make_shared<gml::CityElementNode>(L"1", false, L"a:boundedBy"));
    node.addChild(std::make_shared<gml::CityElementNode>(L"2", false, L"a:lod2Solid"));
    std::ostringstream out;
    gml::XmlWriter writer(out, 2, 3);
    node.write(writer);
    EXPECT_EQ(out.str(), " <x:F>\n"
                         "  <gen:intAttribute name=\"z\">\n"
                         "  <gen:value>1</gen:value>\n"
                         "  </gen:intAttribute>\n"
                         "  <a:lod2Solid>\n"
                         "  </a:lod2Solid>\n"
                         "  <a:boundedBy>\n"
                         "  </a:boundedBy>\n"
                         " </x:F>\n");
}

} // namespace
