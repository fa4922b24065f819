#include "ReaderTestUtil.h"
#include "TestData.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <fstream>
#include <functional>

using namespace readertest;

namespace {

std::string allText(citygml::CityModel const& model) {
    std::string out;
    std::function<void(citygml::Object const&)> attrs = [&](citygml::Object const& o) {
        out += o.getId();
        for (auto const& [k, v] : o.getAttributes())
            out += k + "=" + v.asString() + ";";
    };
    std::function<void(citygml::CityObject const&)> walk = [&](citygml::CityObject const& o) {
        attrs(o);
        for (unsigned i = 0; i < o.getChildCityObjectsCount(); ++i)
            walk(o.getChildCityObject(i));
    };
    attrs(model);
    for (auto const* r : model.getRootCityObjects())
        walk(*r);
    return out;
}

} // namespace

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

TEST(ReaderInput, RealMalformedFileThrows) {
    REQUIRE_TESTDATA();
    std::ifstream in(testsupport::testDataDir() / "awkward_inputs" /
                         "NOT_WELLFORMED_plateau_Issue138-B.gml",
                     std::ios::binary);
    ASSERT_TRUE(in);
    citygml::ParserParams params;
    EXPECT_THROW(citygml::load(in, params), std::runtime_error);
}

TEST(ReaderInput, ExternalEntitiesAreNeverLoaded) {
    std::string secretPath = testing::TempDir() + "reader_entity_secret.txt";
    {
        std::ofstream secret(secretPath);
        secret << "TOPSECRET-CONTENT";
    }
    std::string doc = "<?xml version=\"1.0\"?>\n<!DOCTYPE core:CityModel [\n"
                      "<!ENTITY leak SYSTEM \"file://" +
                      secretPath + "\">\n]>\n" +
                      model2("<gml:name>&leak;</gml:name><core:cityObjectMember>"
                             "<bldg:Building gml:id=\"b\"><gml:name>x&leak;y</gml:name>"
                             "</bldg:Building></core:cityObjectMember>")
                          .substr(39);
    std::string seen;
    try {
        auto model = loadText(doc);
        seen = allText(*model);
        EXPECT_EQ(model->getRootCityObjects().at(0)->getAttributes().at("name").asString(), "xy");
    } catch (std::runtime_error const& e) {
        seen = e.what();
    }
    EXPECT_EQ(seen.find("TOPSECRET"), std::string::npos);
    std::remove(secretPath.c_str());
}

TEST(ReaderInput, EntityExpansionBombIsRefusedQuickly) {
    std::string doc = "<?xml version=\"1.0\"?>\n<!DOCTYPE lolz [\n<!ENTITY l0 \"lollollollol\">\n";
    for (int i = 1; i < 10; ++i) {
        doc += "<!ENTITY l" + std::to_string(i) + " \"";
        for (int k = 0; k < 10; ++k)
            doc += "&l" + std::to_string(i - 1) + ";";
        doc += "\">\n";
    }
    doc += "]>\n<lolz>&l9;</lolz>";
    auto start = std::chrono::steady_clock::now();
    std::string text;
    try {
        auto model = loadText(doc);
        text = allText(*model);
    } catch (std::runtime_error const&) {
    }
    auto seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    EXPECT_LT(seconds, 5.0);
    EXPECT_LT(text.size(), 1000u);
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

TEST(ReaderInput, AwkwardRealFilesLoad) {
    REQUIRE_TESTDATA();
    int loaded = 0;
    for (auto const& entry :
         std::filesystem::directory_iterator(testsupport::testDataDir() / "awkward_inputs")) {
        auto name = entry.path().filename().string();
        if (entry.path().extension() != ".gml" || name.rfind("NOT_WELLFORMED", 0) == 0)
            continue;
        std::ifstream in(entry.path(), std::ios::binary);
        citygml::ParserParams params;
        EXPECT_NO_THROW(citygml::load(in, params)) << name;
        ++loaded;
    }
    EXPECT_GT(loaded, 10);
}
