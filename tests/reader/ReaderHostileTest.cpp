// Untrusted input: every drop is told with its reason, id and line; documents built to exhaust
// memory or time are refused with a clear error.
#include "Files.h"
#include "ReaderTestUtil.h"
#include "TestData.h"

#include <gtest/gtest.h>

#include <sys/resource.h>

#include <chrono>

using namespace readertest;

namespace {

class Recorder : public citygml::CityGMLLogger {
public:
    Recorder() : CityGMLLogger(LOGLEVEL::LL_WARNING) {}
    void log(LOGLEVEL, std::string const& message, char const*, int line) const override {
        lines += std::to_string(line) + "|" + message + "\n";
    }
    mutable std::string lines;
};

std::string dataFile(std::string const& name) {
    return testsupport::readFile(testsupport::dataFile("reader/" + name));
}

std::string nested(int levels, std::string const& open, std::string const& close) {
    std::string s;
    for (int i = 0; i < levels; ++i)
        s += open + "\n";
    for (int i = 0; i < levels; ++i)
        s += close;
    return model2("<core:cityObjectMember><bldg:Building gml:id=\"b\">" + s +
                  "</bldg:Building></core:cityObjectMember>");
}

// Peak resident memory of this process so far, in kB.
long peakKb() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

std::string entities(std::string const& declaration, std::string const& use) {
    return "<?xml version=\"1.0\"?>\n<!DOCTYPE core:CityModel [\n" + declaration + "\n]>\n" +
           model2("<gml:name>" + use + "</gml:name>").substr(39);
}

} // namespace

TEST(ReaderHostile, EveryDropIsToldWithReasonIdAndLine) {
    auto recorder = std::make_shared<Recorder>();
    std::istringstream in(dataFile("drops.gml"));
    auto model = citygml::load(in, citygml::ParserParams(), nullptr, recorder);
    EXPECT_EQ(recorder->lines, dataFile("drops.expected"));
    auto const& g = model->getRootCityObjects().at(0)->getGeometry(0);
    ASSERT_EQ(g.getPolygonsCount(), 2u);
    EXPECT_EQ(g.getPolygon(1)->getId(), "holes");
    EXPECT_TRUE(g.getPolygon(1)->interiorRings().empty());
}

TEST(ReaderHostile, ExhaustingDocumentsAreRefusedWithinBounds) {
    std::string big(100000, 'x');
    std::string refs;
    for (int i = 0; i < 2000; ++i)
        refs += "&big;";
    struct Case {
        std::string document;
        std::string error;
    } const cases[] = {
        {entities("<!ENTITY big \"" + big + "\">", refs), "line 3: the document declares its "
                                                          "own entity 'big'"},
        {entities("<!ENTITY leak SYSTEM \"file:///etc/passwd\">", "&leak;"), "entity 'leak'"},
        {entities("<!ENTITY % p \"x\">", ""), "entity 'p'"},
        {nested(3000, "<bldg:consistsOfBuildingPart><bldg:BuildingPart>",
                "</bldg:BuildingPart></bldg:consistsOfBuildingPart>"),
         "line 505: elements nest deeper than 1000 levels"},
        {nested(10000, "<bldg:lod2MultiSurface><gml:MultiSurface><gml:surfaceMember>",
                "</gml:surfaceMember></gml:MultiSurface></bldg:lod2MultiSurface>"),
         "nest deeper than 1000"},
    };
    auto start = std::chrono::steady_clock::now();
    long const peakBefore = peakKb();
    for (auto const& c : cases) {
        try {
            loadText(c.document);
            ADD_FAILURE() << "loaded: " << c.error;
        } catch (std::runtime_error const& e) {
            EXPECT_NE(std::string(e.what()).find(c.error), std::string::npos) << e.what();
        }
    }
    // Just inside the limit, memory stays linear in depth.
    auto deep = loadText(nested(490, "<bldg:consistsOfBuildingPart><bldg:BuildingPart>",
                                "</bldg:BuildingPart></bldg:consistsOfBuildingPart>"));
    EXPECT_EQ(deep->getRootCityObject(0).getChildCityObjectsCount(), 1u);
    EXPECT_LT(peakKb() - peakBefore, 400 * 1024);
    EXPECT_LT(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count(), 20);
}
