// Compares what our reader finds in the shared CityGML files with independent readings: Debian's
// libcitygml for CityGML 1.0 and 2.0, and an XPath count of surface elements for 3.0.
#include "Files.h"
#include "Process.h"
#include "TestData.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

using testsupport::ProcessResult;
using testsupport::readFile;
using testsupport::runCommand;

std::string quote(fs::path const& p) {
    return testsupport::quote(p.string());
}

// The CityGML version by the namespace URIs a file declares; 0 if it declares none.
int versionOf(std::string const& text) {
    static std::regex const uri(R"re(http://www\.opengis\.net/citygml/([a-z]+/)?([123])\.0["'])re");
    int version = 0;
    for (std::sregex_iterator it(text.begin(), text.end(), uri), end; it != end; ++it)
        version = std::max(version, (*it)[2].str()[0] - '0');
    return version;
}

// Values of the attribute nodes that xmllint prints for an XPath, one ` name="value"` each.
std::vector<std::string> attributeValues(std::string const& xmllintOutput) {
    std::vector<std::string> out;
    static std::regex const attr(R"re(="([^"]*)")re");
    for (std::sregex_iterator it(xmllintOutput.begin(), xmllintOutput.end(), attr), end; it != end;
         ++it)
        out.push_back((*it)[1].str());
    return out;
}

std::vector<fs::path> corpus() {
    std::vector<fs::path> files;
    for (auto const& e : fs::recursive_directory_iterator(testsupport::testDataDir())) {
        auto ext = e.path().extension().string();
        if (e.is_regular_file() && (ext == ".gml" || ext == ".xml" || ext == ".citygml") &&
            e.path().string().find("/schemas/") == std::string::npos &&
            e.path().filename().string().rfind("NOT_WELLFORMED", 0) != 0)
            files.push_back(e.path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

std::string relativeName(fs::path const& p) {
    return fs::relative(p, testsupport::testDataDir()).generic_string();
}

// Where libcitygml 2.4 reads a file wrongly, its counts are not the reference as they stand.
struct OracleFault {
    std::vector<std::string> ignore;   // feature properties whose geometries libcitygml skips
    bool oracleFails;                  // libcitygml aborts on the file
    std::map<std::string, long> delta; // expected (ours - libcitygml) per count
    char const* why;
};

std::map<std::string, long> parseCounts(std::string const& text) {
    std::map<std::string, long> counts;
    std::istringstream lines(text);
    std::string key;
    long value = 0;
    while (lines >> key >> value)
        counts[key] = value;
    return counts;
}

std::map<std::string, OracleFault> const& oracleFaults() {
    static std::map<std::string, OracleFault> const faults = {
#include "OracleFaults.inc"
    };
    return faults;
}

} // namespace

TEST(ReaderConformance, Version1And2FilesMatchLibcitygml) {
    REQUIRE_TESTDATA();
#ifndef ORACLE_COUNTS_EXE
    GTEST_SKIP() << "libcitygml (Debian libcitygml-dev) not found; oracle comparison skipped";
#else
    int compared = 0;
    for (auto const& file : corpus()) {
        std::string text = readFile(file);
        int version = versionOf(text);
        if (version != 1 && version != 2)
            continue;
        std::string name = relativeName(file);
        SCOPED_TRACE(name);
        auto fault = oracleFaults().find(name);
        std::string options;
        if (fault != oracleFaults().end())
            for (auto const& tag : fault->second.ignore)
                options += " --ignore " + tag;
        ProcessResult ours =
            runCommand(std::string(READER_COUNTS_EXE) + options + " " + quote(file));
        EXPECT_EQ(ours.status, 0) << ours.out;
        if (fault != oracleFaults().end() && fault->second.oracleFails) {
            // Ours must still read it; the oracle has nothing to say.
            continue;
        }
        ProcessResult oracle = runCommand(std::string(ORACLE_COUNTS_EXE) + " " + quote(file));
        EXPECT_EQ(oracle.status, 0) << "libcitygml failed on " << name;
        if (oracle.status != 0)
            continue;
        auto expected = parseCounts(oracle.out);
        if (fault != oracleFaults().end())
            for (auto const& [key, d] : fault->second.delta)
                expected[key] += d;
        EXPECT_EQ(parseCounts(ours.out), expected) << "ours: " << ours.out;
        ++compared;
    }
    EXPECT_GT(compared, 40);
#endif
}

TEST(ReaderConformance, Version3FilesReadEveryPolygon) {
    REQUIRE_TESTDATA();
    if (runCommand("xmllint --version").status != 0)
        GTEST_SKIP() << "xmllint not found; 3.0 surface count skipped";
    int compared = 0;
    for (auto const& file : corpus()) {
        if (versionOf(readFile(file)) != 3)
            continue;
        SCOPED_TRACE(relativeName(file));
        // Surface elements outside implicit geometries, plus every reference to one of them from
        // a geometry (app:target references are appearance, not geometry).
        std::string const surface = "(local-name()='Polygon' or local-name()='Triangle' or "
                                    "local-name()='Rectangle' or local-name()='PolygonPatch')";
        std::string const outsideImplicit = "not(ancestor::*[local-name()='ImplicitGeometry'])";
        auto xpath = [&](std::string const& expression) {
            return runCommand("xmllint --xpath \"" + expression + "\" " + quote(file)).out;
        };
        long expected = std::stol(xpath("count(//*[" + surface + " and " + outsideImplicit + "])"));
        auto ids = attributeValues(
            xpath("//*[" + surface + " and " + outsideImplicit + "]/@*[local-name()='id']"));
        std::set<std::string> polygonIds(ids.begin(), ids.end());
        for (auto const& href :
             attributeValues(xpath("//*[local-name()!='target' and " + outsideImplicit +
                                   "]/@*[local-name()='href']")))
            if (href.size() > 1 && href[0] == '#' && polygonIds.count(href.substr(1)))
                ++expected;
        ProcessResult ours = runCommand(std::string(READER_COUNTS_EXE) + " " + quote(file));
        ASSERT_EQ(ours.status, 0);
        auto const counts = parseCounts(ours.out);
        long const polygons = counts.count("polygons") ? counts.at("polygons") : -1;
        // Polygons the reader drops on purpose, by file.
        static std::map<std::string, long> const dropped = {
            // One polygon's only exterior ring has fewer than four positions.
            {"citygml3/ogc/Opera-Lyon_CityGML3.0_LOD2_with_xAL3_FreeText.gml", 1},
        };
        auto d = dropped.find(relativeName(file));
        EXPECT_EQ(polygons, expected - (d == dropped.end() ? 0 : d->second));
        ++compared;
    }
    EXPECT_GT(compared, 40);
}
