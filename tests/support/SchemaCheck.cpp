#include "SchemaCheck.h"

#include "Process.h"
#include "TestData.h"

#include <regex>

namespace testsupport {

namespace {

struct Deviation {
    char const* name;
    std::regex pattern;
};

// What the documents of this system do on purpose, or carry over from their input, that a
// schema check reports. Every other message is a defect.
std::vector<Deviation> const& knownDeviations() {
    static std::vector<Deviation> const list = {
        // The namespaces and schema files are declared as a namespace named schemaLocation, and
        // a list with blanks is no URI.
        {"schemaLocation-namespace",
         std::regex("xmlns:schemaLocation: '[^']*' is not a valid URI")},
        // A relief feature writes "dem:lod" ahead of its envelope.
        {"relief-lod-before-envelope",
         std::regex("Element '\\{http://www\\.opengis\\.net/gml[^}]*\\}boundedBy': This element "
                    "is not expected\\. Expected is \\( \\{http://www\\.opengis\\.net/citygml/"
                    "relief/[23]\\.0\\}reliefComponent \\)")},
        // Attributes stand ahead of all child elements; in 3.0 a building's own properties
        // come after its space boundaries.
        {"property-before-boundary",
         std::regex("Element '\\{http://www\\.opengis\\.net/citygml/3\\.0\\}boundary': This "
                    "element is not expected\\.")},
        // Property elements the tag vocabulary has no schema spelling for keep the reader's
        // lower case (bldg:interiorroom).
        {"lower-case-property",
         std::regex("Element '\\{http://www\\.opengis\\.net/citygml/building/2\\.0\\}interior"
                    "[a-z]+': This element is not expected")},
        // Members of solid aggregates are wrapped like those of surface aggregates.
        {"solid-member-wrapper",
         std::regex("Element '\\{http://www\\.opengis\\.net/gml\\}surfaceMember': This element "
                    "is not expected\\. Expected is one of \\( \\{http://www\\.opengis\\.net/gml"
                    "\\}metaDataProperty")},
        // A document without any feature declares no "core" prefix.
        {"featureless-document",
         std::regex("Namespace prefix core on CityModel is not defined|Element 'core:CityModel': "
                    "No matching global declaration")},
        // Elements of application domain extensions keep prefixes no table declares.
        {"extension-prefix",
         std::regex("namespace error : Namespace prefix [a-z]+ on [A-Za-z]+ is not defined")},
    };
    return list;
}

} // namespace

std::filesystem::path citygmlSchema(int version) {
    auto const schemas = testDataDir() / "schemas" / "schemas.opengis.net" / "citygml";
    return version == 2 ? schemas / "profiles/base/2.0/CityGML.xsd" : schemas / "3.0/CityGML.xsd";
}

std::string schemaCheckUnavailable() {
    if (!haveTestData())
        return "shared test data not found at " + testDataDir().string();
    if (!std::filesystem::exists(citygmlSchema(2)) || !std::filesystem::exists(citygmlSchema(3)))
        return "CityGML schemas not found";
    if (!haveProgram("xmllint"))
        return "xmllint not found";
    return "";
}

SchemaReport checkSchema(std::filesystem::path const& document, int version) {
    ProcessResult const run =
        runCommand("xmllint --noout --nonet --schema " + quote(citygmlSchema(version).string()) +
                   " " + quote(document.string()));
    SchemaReport report;
    report.status = run.status;
    report.all = run.out + run.err;
    std::string const prefix = document.string() + ":";
    std::size_t start = 0;
    for (std::size_t end; (end = report.all.find('\n', start)) != std::string::npos;
         start = end + 1) {
        std::string const line = report.all.substr(start, end - start);
        // Messages name the file first; the lines between repeat the source and point at it.
        if (line.rfind(prefix, 0) != 0 && line.find("error") == std::string::npos)
            continue;
        bool known = false;
        for (auto const& deviation : knownDeviations())
            if (std::regex_search(line, deviation.pattern)) {
                report.deviations.insert(deviation.name);
                known = true;
            }
        if (!known)
            report.unexpected.push_back(line);
    }
    return report;
}

} // namespace testsupport
