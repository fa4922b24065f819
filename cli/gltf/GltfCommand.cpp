#include "GltfCommand.h"

#include "AtomicFile.h"
#include "CodecHost.h"
#include "CommandLine.h"
#include "FileDecoder.h"
#include "FileNames.h"
#include "GeometrySummary.h"
#include "GltfWriter.h"
#include "ObjReader.h"
#include "ReaderDiagnostics.h"
#include "geo/GeoFrame.h"
#include "lod/LodSelection.h"

#include <kolt/Cache.h>
#include <kolt/StringUtils.h>
#include <koltx/Geometry.h>
#include <koltx/KOLTUtils.h>
#include <koltx/Mesh.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <memory>
#include <ostream>

namespace fs = std::filesystem;

namespace {

void printWarnings(std::wstring const& text, std::ostream& err, char const* prefix) {
    for (auto const& line : FileNames::lines(text))
        err << prefix << line << "\n";
}

// Bounds of the meshes in the file's axes (the host's x, z, -y turned back).
void bounds(std::vector<std::shared_ptr<koltx::Mesh>> const& meshes, std::array<double, 3>& low,
            std::array<double, 3>& high) {
    low.fill(INFINITY);
    high.fill(-INFINITY);
    for (auto const& mesh : meshes) {
        auto const& c = mesh->getVertexCoords();
        for (std::size_t i = 0; i + 2 < c.size(); i += 3) {
            double const file[3] = {c[i], -c[i + 2], c[i + 1]};
            for (int a = 0; a < 3; ++a) {
                if (!std::isfinite(file[a]))
                    continue;
                low[a] = std::min(low[a], file[a]);
                high[a] = std::max(high[a], file[a]);
            }
        }
    }
    for (int a = 0; a < 3; ++a) {
        if (low[a] > high[a])
            low[a] = high[a] = 0;
    }
}

} // namespace

int GltfCommand::run(CodecHost const& host, CommandLine const& line, std::ostream& out,
                     std::ostream& err) {
    std::string const& input = line.files.at(0);
    std::string const& output = line.files.at(1);
    std::wstring warnings;
    std::vector<std::shared_ptr<koltx::Mesh>> meshes;
    std::shared_ptr<koltx::Geometry> geometry;
    if (FileNames::lowerExtension(input) == ".obj") {
        auto const cache = koltx::KOLTUtils::share(kolt::Cache::create());
        try {
            meshes = ObjReader::read(input, cache.get(), warnings);
        } catch (std::exception const& e) {
            printWarnings(warnings, err, "warning: ");
            err << "gmlcodec: " << e.what() << "\n";
            return 1;
        }
    } else {
        DecodedFile decoded = FileDecoder(host.manager()).decode(input, true);
        if (!decoded.loaded) {
            err << "gmlcodec: " << decoded.error << "\n";
            return 1;
        }
        printWarnings(decoded.warnings, err, "warning: ");
        decoded.reader->report(err, line.verbose);
        std::string const nothing = FileDecoder::nothingToConvert(decoded, input);
        if (!nothing.empty()) {
            err << "gmlcodec: " << nothing << "; nothing to convert, " << output
                << " not written\n";
            return 1;
        }
        geometry = decoded.geometry;
        if (geometry)
            meshes = geometry->getMeshes();
    }
    GeometrySummary const summary(geometry, std::wstring(), false);
    std::vector<MeshPath> paths;
    std::vector<std::shared_ptr<koltx::Mesh>> selected =
        LodSelection::fromOptions(line.mesh.allLods, line.encode.lod).apply(meshes, &paths);

    try {
        std::array<double, 3> low, high;
        bounds(selected, low, high);
        GeoFrame const frame(summary.spatialReference.value_or(std::string()), line.mesh.frame, low,
                             high, warnings);
        GltfWriter::Input scene;
        scene.meshes = std::move(selected);
        scene.paths = std::move(paths);
        scene.perFeature = line.mesh.perFeature;
        scene.nodeName = fs::path(input).stem().string();
        scene.extras = frame.extras();
        scene.extras["lods"] = line.mesh.allLods ? std::string("all")
                               : line.encode.lod
                                   ? "highest at or below " + std::to_string(*line.encode.lod)
                                   : std::string("highest");
        nlohmann::ordered_json attributes = nlohmann::ordered_json::object();
        for (auto const& [name, value] : summary.attributes)
            attributes[name] = nlohmann::ordered_json::parse(value, nullptr, false);
        scene.extras["attributes"] = attributes;
        // A single conversion writes once and then exits: the operating system reclaims the
        // writer's tables far faster than freeing them one by one would, so, like the decoded
        // model, they are kept to the end of the process. Runs over many files free them.
        auto owned = std::make_unique<GltfWriter const>(std::move(scene), frame, warnings);
        GltfWriter const& writer = *owned;
        if (!FileDecoder::inBatch()) {
            static auto* const retained = new std::vector<std::unique_ptr<GltfWriter const>>();
            retained->push_back(std::move(owned));
        }
        if (FileNames::lowerExtension(output) == ".glb") {
            AtomicFile file(output);
            writer.writeGlb(file.stream());
            file.commit();
        } else {
            writer.writeGltf(output);
        }
        printWarnings(warnings, err, "warning: ");
        auto const& t = writer.totals();
        out << "wrote " << output << ": " << t.meshes << " meshes, " << t.faces << " faces, "
            << t.triangles << " triangles, " << t.vertices << " vertices, " << t.materials
            << " materials, " << t.textures << " textures, " << t.features << " features\n";
    } catch (std::exception const& e) {
        printWarnings(warnings, err, "warning: ");
        err << "gmlcodec: " << e.what() << "\n";
        return 1;
    }
    return 0;
}
