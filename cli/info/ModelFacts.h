#pragma once

#include <array>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace koltx {
class Mesh;
}

// What `info` says about a model beyond counts: the CityGML version, the features by class and
// the levels of detail (both from the mesh paths), the bounding box in the file's axes and the
// CRS as PROJ knows it.
class ModelFacts {
public:
    ModelFacts(std::string const& file, std::vector<std::shared_ptr<koltx::Mesh>> const& meshes,
               std::optional<std::string> const& spatialReference);

    std::optional<std::string> version; // "1.0", "2.0" or "3.0"
    std::map<std::string, std::size_t, std::less<>> featuresByClass;
    std::set<int> lods;
    std::optional<std::array<double, 6>> box; // min x, y, z, max x, y, z
    std::optional<std::string> crs;           // PROJ's name for it

    std::string toText() const;
    // `"key": value` pairs, each preceded by ", ", to go into info's JSON object.
    std::string jsonMembers() const;

private:
    std::size_t& countOf(std::string_view tag);
};
