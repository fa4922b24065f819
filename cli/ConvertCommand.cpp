#include "ConvertCommand.h"

#include "CodecHost.h"
#include "CommandLine.h"
#include "FileDecoder.h"
#include "GeometrySummary.h"
#include "GmlEncodeCommand.h"
#include "ObjWriter.h"
#include "UsageError.h"
#include "gltf/GltfCommand.h"
#include "lod/LodSelection.h"
#include "tiles/BatchConvert.h"

#include <kolt/StringUtils.h>
#include <koltx/Geometry.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <ostream>
#include <stdexcept>

namespace {

std::string extension(std::string const& path) {
    std::string ext = std::filesystem::path(path).extension().string();
    std::transform(ext.begin(), ext.end(), ext.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return ext;
}

void printWarnings(std::wstring const& warnings, std::ostream& err) {
    for (auto const& line : GeometrySummary(nullptr, warnings).warnings)
        err << "warning: " << line << "\n";
}

} // namespace

int ConvertCommand::run(CodecHost const& host, CommandLine const& line, std::ostream& out,
                        std::ostream& err) {
    if (std::filesystem::is_directory(line.files.at(0)))
        return BatchConvert::run(host, line, out, err);
    std::string const from = extension(line.files.at(0));
    std::string const to = extension(line.files.at(1));
    bool const gml = from == ".gml" || from == ".xml" || from == ".citygml";
    if ((gml || from == ".obj") && (to == ".glb" || to == ".gltf"))
        return GltfCommand::run(host, line, out, err);
    if ((from == ".gml" || from == ".xml") && to == ".obj")
        return gmlToObj(host, line, out, err);
    if ((from == ".gml" || from == ".xml" || from == ".obj") && to == ".gml")
        return GmlEncodeCommand::run(host, line.files.at(0), line.files.at(1), line.encode, out,
                                     err);
    throw UsageError("cannot convert " + (from.empty() ? std::string("(no extension)") : from) +
                     " to " + (to.empty() ? std::string("(no extension)") : to));
}

int ConvertCommand::gmlToObj(CodecHost const& host, CommandLine const& line, std::ostream& out,
                             std::ostream& err) {
    std::string const& input = line.files.at(0);
    std::string const& output = line.files.at(1);
    DecodedFile decoded = FileDecoder(host.manager()).decode(input, true);
    if (!decoded.loaded) {
        for (auto const& warning : GeometrySummary(nullptr, decoded.warnings).warnings)
            err << "gmlcodec: " << warning << "\n";
        return 1;
    }
    GeometrySummary summary(decoded.geometry, decoded.warnings);
    std::vector<std::shared_ptr<koltx::Mesh>> const meshes =
        LodSelection::fromOptions(line.mesh.allLods, line.encode.lod)
            .apply(decoded.geometry ? decoded.geometry->getMeshes()
                                    : std::vector<std::shared_ptr<koltx::Mesh>>());
    summary.countMeshes(meshes); // the summary tells what was written
    std::wstring writeWarnings;
    ObjWriter writer(output);
    try {
        writer.write(meshes, summary, writeWarnings);
    } catch (std::exception const& e) {
        printWarnings(decoded.warnings + writeWarnings, err);
        err << "gmlcodec: " << e.what() << "\n";
        return 1;
    }
    printWarnings(decoded.warnings + writeWarnings, err);
    out << "wrote " << output << ": " << summary.meshes << " meshes, " << summary.faces
        << " faces, " << summary.holes << " holes, " << summary.vertices << " vertices, "
        << summary.materials << " materials, " << summary.textures << " textures\n";
    return 0;
}
