#pragma once

#include <filesystem>
#include <set>
#include <string>
#include <vector>

namespace testsupport {

// What xmllint says about one document against the official CityGML schemas.
struct SchemaReport {
    int status = -1;                     // xmllint's exit code
    std::vector<std::string> unexpected; // messages that no known deviation explains
    std::set<std::string> deviations;    // names of the known deviations that were seen
    std::string all;                     // everything xmllint printed
};

// The CityGML schema of version 2 or 3 in the shared corpus.
std::filesystem::path citygmlSchema(int version);

// Why the schema check cannot run here (no corpus, no schemas, no xmllint); empty when it can.
std::string schemaCheckUnavailable();

// Checks `document` against the schema of `version`, sorting xmllint's messages into known
// deviations of the documents this system writes and everything else.
SchemaReport checkSchema(std::filesystem::path const& document, int version);

} // namespace testsupport
