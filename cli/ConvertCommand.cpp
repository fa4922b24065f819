#include "ConvertCommand.h"

#include "CodecHost.h"
#include "CommandLine.h"
#include "FileDecoder.h"
#include "FileNames.h"
#include "GeometrySummary.h"
#include "GmlEncodeCommand.h"
#include "ObjWriter.h"
#include "ReaderDiagnostics.h"
#include "TextureAccess.h"
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

void printWarnings(std::wstring const& warnings, std::ostream& err) {
    for (auto const& line : FileNames::lines(warnings))
        err << "warning: " << line << "\n";
}

std::string shown(std::string const& ext) {
    return ext.empty() ? std::string("(no extension)") : ext;
}

} // namespace

int ConvertCommand::run(CodecHost const& host, CommandLine const& line, std::ostream& out,
                        std::ostream& err) {
    if (std::filesystem::is_directory(line.files.at(0)))
        return BatchConvert::run(host, line, out, err);
    std::string const& input = line.files.at(0);
    std::string const& output = line.files.at(1);
    bool const fromObj = FileNames::lowerExtension(input) == ".obj";
    bool const toObj = FileNames::lowerExtension(output) == ".obj";
    bool const toGml = FileNames::isCityGML(output);
    bool const toGltf =
        FileNames::lowerExtension(output) == ".glb" || FileNames::lowerExtension(output) == ".gltf";
    if (!(FileNames::isCityGML(input) && toObj) &&
        !((FileNames::isCityGML(input) || fromObj) && (toGml || toGltf)))
        throw UsageError("cannot convert " + shown(FileNames::lowerExtension(input)) + " to " +
                         shown(FileNames::lowerExtension(output)));
    if (FileNames::sameFile(input, output)) {
        err << "gmlcodec: cannot write " << output << ": it is the input file " << input << "\n";
        return 1;
    }
    TextureAccess textures(input, line.textureRoots, line.anyTexturePath);
    if (toGltf)
        return GltfCommand::run(host, line, out, err);
    if (toObj)
        return gmlToObj(host, line, textures, out, err);
    GmlEncodeCommand::Context const context{&textures, line.verbose};
    return GmlEncodeCommand::run(host, input, output, line.encode, out, err, context);
}

int ConvertCommand::gmlToObj(CodecHost const& host, CommandLine const& line,
                             TextureAccess const& textures, std::ostream& out, std::ostream& err) {
    std::string const& input = line.files.at(0);
    std::string const& output = line.files.at(1);
    DecodedFile decoded = FileDecoder(host.manager()).decode(input, true);
    if (!decoded.loaded) {
        err << "gmlcodec: " << decoded.error << "\n";
        return 1;
    }
    printWarnings(decoded.warnings, err);
    decoded.reader->report(err, line.verbose);
    std::string const nothing = FileDecoder::nothingToConvert(decoded, input);
    if (!nothing.empty()) {
        err << "gmlcodec: " << nothing << "; nothing to convert, " << output << " not written\n";
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
    writer.protect(std::filesystem::absolute(input));
    for (auto const& file : textures.readFiles())
        writer.protect(file);
    try {
        writer.write(meshes, summary, writeWarnings);
    } catch (std::exception const& e) {
        printWarnings(writeWarnings, err);
        err << "gmlcodec: " << e.what() << "\n";
        return 1;
    }
    printWarnings(writeWarnings, err);
    out << "wrote " << output << ": " << summary.meshes << " meshes, " << summary.faces
        << " faces, " << summary.holes << " holes, " << summary.vertices << " vertices, "
        << summary.materials << " materials, " << summary.textures << " textures\n";
    return 0;
}
