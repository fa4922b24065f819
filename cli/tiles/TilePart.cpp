#include "TilePart.h"

#include "CodecHost.h"
#include "CommandLine.h"
#include "FileDecoder.h"
#include "GeometrySummary.h"
#include "GlobeTransform.h"
#include "TextureAccess.h"
#include "TileFeatures.h"
#include "TileTree.h"
#include "geo/CrsName.h"
#include "geo/GeoFrame.h"
#include "gltf/GltfWriter.h"
#include "lod/LodSelection.h"
#include "lod/MeshPath.h"

#include <koltx/Geometry.h>
#include <koltx/Mesh.h>

#include <nlohmann/json.hpp>

#include <atomic>
#include <cmath>
#include <fstream>
#include <mutex>
#include <set>
#include <stdexcept>
#include <unistd.h>

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;
using Matrix = std::array<double, 16>;

namespace {

std::atomic<unsigned> folders{0};

// Column-major rigid transforms: the inverse of `a` times `b`.
Matrix relative(Matrix const& a, Matrix const& b) {
    Matrix inv{};
    for (int r = 0; r < 3; ++r) {
        for (int c = 0; c < 3; ++c)
            inv[c * 4 + r] = a[r * 4 + c]; // the rotation's transpose
        inv[12 + r] = -(a[r * 4] * a[12] + a[r * 4 + 1] * a[13] + a[r * 4 + 2] * a[14]);
    }
    inv[15] = 1;
    Matrix out{};
    for (int c = 0; c < 4; ++c)
        for (int r = 0; r < 4; ++r)
            for (int k = 0; k < 4; ++k)
                out[c * 4 + r] += inv[k * 4 + r] * b[c * 4 + k];
    return out;
}

Json regionJson(TileFeatures::Region const& r) {
    return Json::array({r[0], r[1], r[2], r[3], r[4], r[5]});
}

struct Writer {
    std::vector<std::shared_ptr<koltx::Mesh>>& meshes; // each let go once its tile is written
    std::vector<MeshPath>& paths;
    std::vector<TileFeatures::Feature> const& features;
    GeoFrame& frame;
    fs::path const& folder;
    std::wstring warnings;
    uint64_t tiles = 0;
    uint64_t bytes = 0;

    // The tile's JSON; `parent` is the absolute transform above it.
    Json tile(TileTree::Node const& node, Matrix const& parent, bool root) {
        Json out = {{"boundingVolume", {{"region", regionJson(node.region)}}},
                    {"geometricError", node.error}};
        if (root)
            out["refine"] = "ADD";
        Matrix absolute = parent;
        if (!node.content.empty()) {
            std::array<double, 3> low{INFINITY, INFINITY, INFINITY},
                high{-INFINITY, -INFINITY, -INFINITY};
            std::vector<uint32_t> chosen;
            for (uint32_t f : node.content) {
                for (int a = 0; a < 3; ++a) {
                    low[a] = std::min(low[a], features[f].low[a]);
                    high[a] = std::max(high[a], features[f].high[a]);
                }
                chosen.insert(chosen.end(), features[f].meshes.begin(), features[f].meshes.end());
            }
            std::sort(chosen.begin(), chosen.end());
            frame.moveOrigin(
                {(low[0] + high[0]) / 2, (low[1] + high[1]) / 2, (low[2] + high[2]) / 2});
            absolute = *frame.enuToEcef();
            frame.fit(low, high);
            GltfWriter::Input scene;
            for (uint32_t m : chosen) {
                scene.meshes.push_back(std::move(meshes[m]));
                scene.paths.push_back(std::move(paths[m]));
            }
            scene.nodeName = "tile " + node.name;
            scene.extras = frame.extras();
            GltfWriter const writer(std::move(scene), frame, warnings);
            fs::path const file = folder / (node.name + ".glb");
            std::ofstream stream(file, std::ios::binary);
            writer.writeGlb(stream);
            stream.close();
            if (!stream)
                throw std::runtime_error("cannot write " + file.string());
            bytes += fs::file_size(file);
            ++tiles;
            out["transform"] = root ? absolute : relative(parent, absolute);
            out["content"] = {{"uri", node.name + ".glb"}};
        }
        if (!node.children.empty()) {
            Json children = Json::array();
            for (auto const& child : node.children)
                children.push_back(tile(child, absolute, false));
            out["children"] = std::move(children);
        }
        return out;
    }
};

void writeJson(fs::path const& file, Json const& json) {
    std::ofstream stream(file, std::ios::binary);
    stream << json.dump() << "\n";
    stream.close();
    if (!stream)
        throw std::runtime_error("cannot write " + file.string());
}

} // namespace

std::string TilePart::name(std::string const& input) {
    std::error_code error;
    fs::path path = fs::weakly_canonical(fs::absolute(input), error);
    if (error)
        path = fs::absolute(input);
    uint32_t hash = 2166136261u; // FNV-1a
    for (unsigned char c : path.string())
        hash = (hash ^ c) * 16777619u;
    std::string stem;
    for (unsigned char c : path.stem().string())
        stem += std::isalnum(c) || c == '-' || c == '_' || c == '.' ? static_cast<char>(c) : '_';
    char hex[9];
    std::snprintf(hex, sizeof hex, "%08x", hash);
    return (stem.empty() ? std::string("part") : stem.substr(0, 80)) + "-" + hex;
}

FileBatch::Outcome TilePart::write(CodecHost const& host, CommandLine const& line,
                                   std::string const& input, fs::path const& outDir, bool last) {
    TextureAccess const textures(input, line.textureRoots, line.anyTexturePath);
    DecodedFile decoded = FileDecoder(host.manager()).decode(input, false);
    if (!decoded.loaded)
        throw std::runtime_error(decoded.error);
    if (last && decoded.geometry) {
        static std::mutex lock;
        static auto* const kept = new std::vector<std::shared_ptr<koltx::Geometry>>();
        std::lock_guard<std::mutex> const guard(lock);
        kept->push_back(decoded.geometry);
    }
    std::string const nothing = FileDecoder::nothingToConvert(decoded, input);
    if (!nothing.empty())
        throw std::runtime_error(nothing);
    GeometrySummary const summary(decoded.geometry, std::wstring(), false);
    std::optional<std::string> crs = line.mesh.frame.crs;
    if (!crs && summary.spatialReference)
        crs = CrsName::toProj(*summary.spatialReference);
    if (!crs)
        throw std::runtime_error(
            (summary.spatialReference
                 ? "the spatial reference '" + *summary.spatialReference + "' is unknown"
                 : std::string("the file names no spatial reference")) +
            "; give the CRS with --crs to place it on the globe");
    std::vector<MeshPath> paths;
    std::vector<std::shared_ptr<koltx::Mesh>> meshes =
        LodSelection::fromOptions(line.mesh.allLods, line.encode.lod)
            .apply(decoded.geometry ? decoded.geometry->getMeshes()
                                    : std::vector<std::shared_ptr<koltx::Mesh>>(),
                   &paths);
    decoded.geometry.reset(); // the tiles own the meshes now
    // One east-north-up frame for the file, moved to each tile's centre in turn.
    GeoFrame::Options options;
    options.crs = *crs;
    options.enu = true;
    std::array<double, 3> first{};
    for (auto const& mesh : meshes) {
        auto const& c = mesh->getVertexCoords();
        if (c.size() >= 3 && std::isfinite(c[0]) && std::isfinite(c[1]) && std::isfinite(c[2])) {
            first = {c[0], -c[2], c[1]};
            break;
        }
    }
    std::wstring frameWarnings;
    GeoFrame frame(std::string(), options, first, first, frameWarnings);
    if (!frame.enuToEcef())
        throw std::runtime_error("PROJ cannot place the CRS '" + *crs + "' on the globe");
    TileFeatures const features(meshes, paths, GlobeTransform(frame));
    FileBatch::Outcome outcome;
    for (auto const& text : GeometrySummary(nullptr, decoded.warnings).warnings)
        outcome.warnings.push_back(text);
    if (features.unplaced() > 0)
        outcome.warnings.push_back(std::to_string(features.unplaced()) +
                                   " features without a coordinate PROJ can place were left out");

    fs::path const parts = outDir / PartsFolder;
    fs::create_directories(parts);
    std::string const partName = name(input);
    fs::path const temporary = parts / ("." + partName + ".tmp" + std::to_string(getpid()) + "_" +
                                        std::to_string(folders++));
    fs::create_directory(temporary);
    try {
        Json index = {{"file", fs::absolute(input).string()},
                      {"features", features.features().size()}};
        if (features.features().empty()) {
            index.update(Json{{"tiles", 0},
                              {"bytes", 0},
                              {"region", nullptr},
                              {"geometricError", 0},
                              {"tileset", nullptr}});
        } else {
            TileTree const tree(features.features(), line.tiles.tileFeatures, line.tiles.tileBytes);
            Writer writer{meshes, paths, features.features(), frame, temporary, {}, 0, 0};
            Matrix identity{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
            Json root = writer.tile(tree.root(), identity, true);
            double const error = std::max(tree.largest(), tree.root().error);
            Json const tileset = {{"asset", {{"version", "1.1"}, {"generator", "gmlcodec"}}},
                                  {"geometricError", error},
                                  {"root", std::move(root)}};
            writeJson(temporary / "tileset.json", tileset);
            std::set<std::string> seen;
            for (auto const& text : GeometrySummary(nullptr, writer.warnings).warnings)
                if (seen.insert(text).second)
                    outcome.warnings.push_back(text);
            index.update(
                Json{{"tiles", writer.tiles},
                     {"bytes", writer.bytes},
                     {"region", regionJson(tree.root().region)},
                     {"geometricError", error},
                     {"tileset", std::string(PartsFolder) + "/" + partName + "/tileset.json"}});
            outcome.tiles = writer.tiles;
            outcome.bytes = writer.bytes;
        }
        writeJson(temporary / IndexName, index);
        fs::path const target = parts / partName;
        fs::remove_all(target);
        fs::rename(temporary, target);
    } catch (...) {
        std::error_code ignored;
        fs::remove_all(temporary, ignored);
        throw;
    }
    outcome.ok = true;
    outcome.features = features.features().size();
    return outcome;
}
