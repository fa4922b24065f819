#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace koltx {
class Geometry;
class Mesh;
} // namespace koltx

// What `gmlcodec info` reports about one decoded file. Texts are UTF-8.
class GeometrySummary {
public:
    // One "/fields/" attribute: its name and its value as JSON text.
    using Attribute = std::pair<std::string, std::string>;

    // `geometry` may be null (a file without polygons).
    // `withMeshes` false leaves the mesh counts at zero (spatial reference and attributes only);
    // `allNames` false keeps only the first and the last mesh name.
    GeometrySummary(std::shared_ptr<koltx::Geometry> const& geometry, std::wstring const& warnings,
                    bool withMeshes = true, bool allNames = true);

    std::size_t meshes = 0;
    uint64_t faces = 0; // faces that are not holes
    uint64_t holes = 0;
    uint64_t vertices = 0;
    std::size_t materials = 0; // distinct host materials
    std::size_t textures = 0;  // distinct resolved textures
    std::optional<std::string> spatialReference;
    std::vector<Attribute> attributes;
    std::vector<std::string> warnings; // one per line
    std::vector<std::string> meshNames;

    // Counts these meshes instead (meshes, faces, holes, vertices, materials, textures, names).
    void countMeshes(std::vector<std::shared_ptr<koltx::Mesh>> const& meshes, bool allNames = true);

    std::string toJson() const;
    std::string toText() const;
};
