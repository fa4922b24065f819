#include "InfoCommand.h"

#include "CodecHost.h"
#include "CommandLine.h"
#include "FileDecoder.h"
#include "GeometrySummary.h"
#include "ReaderDiagnostics.h"
#include "TextureAccess.h"

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
    GeometrySummary summary(decoded.geometry, decoded.warnings);
    // What the reader dropped counts among the warnings, and so does finding nothing at all.
    for (auto const& warning : decoded.reader->lines())
        summary.warnings.push_back(warning);
    std::string const nothing = FileDecoder::nothingToConvert(decoded, input);
    if (!nothing.empty())
        summary.warnings.push_back(nothing);
    if (line.json) {
        out << summary.toJson();
    } else {
        for (auto const& warning : summary.warnings)
            err << "warning: " << warning << "\n";
        out << "file:              " << input << "\n" << summary.toText();
    }
    return 0;
}
