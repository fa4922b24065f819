#include "InfoCommand.h"

#include "CodecHost.h"
#include "CommandLine.h"
#include "FileDecoder.h"
#include "GeometrySummary.h"

#include <ostream>

int InfoCommand::run(CodecHost const& host, CommandLine const& line, std::ostream& out,
                     std::ostream& err) {
    std::string const& input = line.files.at(0);
    DecodedFile const decoded = FileDecoder(host.manager()).decode(input, true);
    GeometrySummary const summary(decoded.geometry, decoded.warnings);
    if (!decoded.loaded) {
        for (auto const& warning : summary.warnings)
            err << "gmlcodec: " << warning << "\n";
        return 1;
    }
    if (line.json) {
        out << summary.toJson();
    } else {
        for (auto const& warning : summary.warnings)
            err << "warning: " << warning << "\n";
        out << "file:              " << input << "\n" << summary.toText();
    }
    return 0;
}
