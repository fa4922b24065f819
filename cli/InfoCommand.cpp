#include "InfoCommand.h"

#include "CodecHost.h"
#include "CommandLine.h"
#include "FileDecoder.h"
#include "GeometrySummary.h"
#include "ReaderDiagnostics.h"
#include "TextureAccess.h"
#include "info/ModelFacts.h"

#include <koltx/Geometry.h>

#include <ostream>

int InfoCommand::run(CodecHost const& host, CommandLine const& line, std::ostream& out,
                     std::ostream& err) {
    std::string const& input = line.files.at(0);
    TextureAccess const textures(input, line.textureRoots, line.anyTexturePath);
    DecodedFile const decoded = FileDecoder(host.manager()).decode(input, true);
    if (!decoded.loaded) {
        err << "gmlcodec: " << decoded.error << "\n";
        return 1;
    }
    // Every mesh name only when asked for; the first and the last always.
    GeometrySummary summary(decoded.geometry, decoded.warnings, true, line.names);
    // What the reader dropped counts among the warnings, and so does finding nothing at all.
    for (auto const& warning : decoded.reader->lines())
        summary.warnings.push_back(warning);
    std::string const nothing = FileDecoder::nothingToConvert(decoded, input);
    if (!nothing.empty())
        summary.warnings.push_back(nothing);
    ModelFacts const facts(input,
                           decoded.geometry ? decoded.geometry->getMeshes()
                                            : std::vector<std::shared_ptr<koltx::Mesh>>(),
                           summary.spatialReference);
    if (line.json) {
        std::string json = summary.toJson();
        json.insert(json.size() - 2, facts.jsonMembers());
        out << json;
    } else {
        for (auto const& warning : summary.warnings)
            err << "warning: " << warning << "\n";
        out << "file:              " << input << "\n" << summary.toText() << facts.toText();
        if (line.names) {
            out << "mesh names:\n";
            for (auto const& name : summary.meshNames)
                out << "  " << name << "\n";
        }
    }
    return 0;
}
