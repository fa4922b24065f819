#include "ReaderTestUtil.h"

#include <gtest/gtest.h>

using namespace readertest;

TEST(ReaderInput, MalformedXmlThrowsWithPosition) {
    try {
        loadText("<?xml version=\"1.0\"?>\n<a>\n  <b></c>\n</a>");
        FAIL() << "no exception";
    } catch (std::runtime_error const& e) {
        std::string what = e.what();
        EXPECT_NE(what.find("line 3"), std::string::npos) << what;
        EXPECT_NE(what.find("column"), std::string::npos) << what;
        EXPECT_NE(what.find("mismatch"), std::string::npos) << what;
    }
    EXPECT_THROW(loadText(""), std::runtime_error);
    EXPECT_THROW(loadText("not xml at all"), std::runtime_error);
    EXPECT_THROW(loadText("<a>"), std::runtime_error);
}

TEST(ReaderInput, EncodingsThatOccurInPractice) {
    std::string body = "<core:CityModel xmlns:core=\"http://www.opengis.net/citygml/2.0\" "
                       "xmlns:gml=\"http://www.opengis.net/gml\"><gml:name>";
    auto name = [](std::string const& doc) {
        return loadText(doc)->getAttributes().at("name").asString();
    };
    EXPECT_EQ(name("\xEF\xBB\xBF<?xml version=\"1.0\" encoding=\"UTF-8\"?>" + body +
                   "\xC3\xA4</gml:name></core:CityModel>"),
              "\xC3\xA4");
    EXPECT_EQ(name("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>" + body +
                   "\xE4</gml:name></core:CityModel>"),
              "\xC3\xA4");
    // 0x80 is the euro sign in windows-1252 and a control character in ISO-8859-1.
    EXPECT_EQ(name("<?xml version=\"1.0\" encoding=\"windows-1252\"?>" + body +
                   "\x80</gml:name></core:CityModel>"),
              "\xE2\x82\xAC");
    std::string utf16 = "\xFF\xFE";
    for (char c : std::string("<?xml version=\"1.0\" encoding=\"UTF-16\"?>") + body + "Z" +
                      "</gml:name></core:CityModel>") {
        utf16 += c;
        utf16 += '\0';
    }
    EXPECT_EQ(name(utf16), "Z");
    // Bytes that the declared encoding cannot hold fail the load with a message of their own.
    try {
        name("<?xml version=\"1.0\" encoding=\"windows-1252\"?>" + body +
             "\x81\x8D</gml:name></core:CityModel>");
        FAIL() << "no exception";
    } catch (std::runtime_error const& e) {
        EXPECT_NE(std::string(e.what()).find("encoding"), std::string::npos) << e.what();
    }
}
