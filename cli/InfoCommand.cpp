#include "InfoCommand.h"

#include "CodecHost.h"
#include "CommandLine.h"
#include "FileDecoder.h"
#include "GeometrySummary.h"
#include "info/ModelFacts.h"

#include <koltx/Geometry.h>

#include <ostream>

int InfoCommand::run(CodecHost const& host, CommandLine const& line, std::ostream& out,
                     std::ostream& err) {
    std::string const& input = line.files.at(0);
    DecodedFile const decoded = FileDecoder(host.manager()).decode(input, true);
    GeometrySummary summary(decoded.geometry, decoded.warnings);
    if (!decoded.loaded) {
        for (auto const& warning : summary.warnings)
            err << "gmlcodec: " << warning << "\n";
        return 1;
    }
    ModelFacts const facts(input,
                           decoded.geometry ? decoded.geometry->getMeshes()
                                            : std::vector<std::shared_ptr<koltx::Mesh>>(),
                           summary.spatialReference);
    if (line.json) {
        // Every mesh name only when asked for; the first and the last always.
        if (!line.names && summary.meshNames.size() > 2)
            summary.meshNames.erase(summary.meshNames.begin() + 1, summary.meshNames.end() - 1);
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
