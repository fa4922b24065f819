#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace kolt {
class AttributeMapBuilder;
}

// The command-line options that map onto the CityGML encoder's options. Each is set only when
// the user gave it, so that the tool can tell a choice from a default.
class EncodeOptions {
public:
    // If arguments[i] is one of these options, takes it (and its value, advancing `i`) and
    // returns true. Throws UsageError for a missing or malformed value.
    bool consume(std::vector<std::string> const& arguments, std::size_t& i);

    // Writes every option that was given into `builder`, under the encoder's keys.
    void apply(kolt::AttributeMapBuilder& builder) const;

    bool empty() const;

    static std::string usage();

    std::optional<int> lod;
    std::optional<std::string> baseName;
    std::optional<std::string> srsName;
    std::optional<double> vertexPrecision;
    std::optional<bool> mergeVertices;
    std::optional<bool> errorFallback;
};
