#pragma once

#include "FeatureTable.h"
#include "lod/MeshPath.h"

#include <nlohmann/json.hpp>

#include <array>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

class GeoFrame;
namespace koltx {
class Material;
class Mesh;
} // namespace koltx

// Writes a set of host meshes as glTF 2.0: one primitive per material (per node), flat normals,
// texture images with their original bytes, feature ids per vertex (EXT_mesh_features) and one
// property table of features (EXT_structural_metadata). The constructor plans everything (sizes,
// bounds, feature rows); the binary buffer is then streamed, never held whole, so one writer can
// serve a file or one tile of many.
class GltfWriter {
public:
    struct Input {
        std::vector<std::shared_ptr<koltx::Mesh>> meshes; // host axes, as decoded
        std::vector<MeshPath> paths;    // the meshes' parsed names, same order; parsed when empty
        bool perFeature = false;        // one node per top-level feature
        std::string nodeName = "model"; // the single node's name otherwise
        nlohmann::ordered_json extras = nlohmann::ordered_json::object(); // asset.extras
    };

    struct Totals {
        std::size_t meshes = 0;
        uint64_t faces = 0;
        uint64_t triangles = 0;
        uint64_t vertices = 0;
        std::size_t materials = 0;
        std::size_t textures = 0;
        std::size_t features = 0;
        std::size_t nodes = 0;
    };

    // Faces that cannot be written (a coordinate that is not finite, fewer than three corners)
    // are counted in one line of `warnings`.
    GltfWriter(Input input, GeoFrame const& frame, std::wstring& warnings);
    ~GltfWriter();

    // One binary GLB, images embedded. Throws std::runtime_error when an image changed on disk
    // or the file would pass the format's 4 GiB.
    void writeGlb(std::ostream& out) const;
    // `path` (.gltf) with `<stem>.bin` and copies of the images beside it, all or nothing.
    void writeGltf(std::filesystem::path const& path) const;

    Totals const& totals() const { return sums; }
    FeatureTable const& features() const { return table; }

private:
    struct FaceRef {
        uint32_t mesh;
        uint32_t face;
    };
    struct Primitive {
        uint32_t node = 0;
        uint32_t material = 0;
        std::vector<FaceRef> faces;
        uint64_t vertices = 0;
        uint64_t indices = 0;
        std::array<float, 3> low{}, high{};
        uint32_t featureCount = 0;
    };
    struct MaterialEntry;
    struct Image {
        std::filesystem::path source;
        uint64_t size = 0;
        std::string mime;
        std::string bytes; // the PNG without its colour-space chunks, when it had any
    };

    void plan(std::wstring& warnings);
    uint32_t materialIndex(koltx::Material const* material, std::wstring& warnings);
    nlohmann::ordered_json document(bool embedImages, std::string const& binUri,
                                    std::vector<std::string> const& imageUris) const;
    uint64_t binaryLength(bool embedImages) const;
    void writeBinary(std::ostream& out, bool embedImages) const;
    uint32_t vertexStride(Primitive const& p) const;

    Input in;
    GeoFrame const& frame;
    FeatureTable table;
    std::vector<uint32_t> meshFeature;
    std::vector<uint32_t> meshNode;
    std::vector<std::string> nodeNames;
    std::vector<std::vector<uint32_t>> meshMaterials; // host material index to ours, per mesh
    std::vector<std::vector<float>> positions;        // in the output frame, per mesh
    std::vector<MaterialEntry> materials;
    std::vector<Image> images;
    std::vector<Primitive> primitives;
    std::string metadata; // property table bytes, 8-aligned parts
    std::vector<std::pair<uint64_t, uint64_t>> metadataViews; // offset, length within it
    Totals sums;
};
