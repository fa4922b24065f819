#include "BatchConvert.h"

#include "CommandLine.h"
#include "ConvertCommand.h"
#include "FileBatch.h"
#include "UsageError.h"

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <ostream>
#include <sstream>

namespace fs = std::filesystem;

int BatchConvert::run(CodecHost const& host, CommandLine const& line, std::ostream& out,
                      std::ostream& err) {
    auto const start = std::chrono::steady_clock::now();
    if (line.tiles.to.empty())
        throw UsageError("convert of a folder needs --to obj|glb|gltf|gml");
    fs::path const outDir = line.files.at(1);
    std::vector<FileBatch::Input> const inputs = FileBatch::expand({line.files.at(0)});
    if (inputs.empty())
        throw std::runtime_error("no CityGML files (.gml, .citygml, .xml) in " + line.files.at(0));
    unsigned const threads = line.tiles.threads();
    std::vector<FileBatch::Outcome> const outcomes = FileBatch::run(
        inputs, threads,
        [&](FileBatch::Input const& input) {
            fs::path target = outDir / fs::path(input.relative);
            target.replace_extension("." + line.tiles.to);
            std::error_code same;
            if (fs::equivalent(input.path, target, same))
                throw std::runtime_error("the output " + target.string() +
                                         " would overwrite the input");
            fs::create_directories(target.parent_path());
            CommandLine one = line;
            one.files = {input.path, target.string()};
            std::ostringstream said, complained;
            FileBatch::Outcome outcome;
            try {
                outcome.ok = ConvertCommand::run(host, one, said, complained) == 0;
            } catch (std::exception const& e) {
                complained << "gmlcodec: " << e.what() << "\n";
            }
            std::istringstream lines(complained.str());
            for (std::string text; std::getline(lines, text);) {
                if (text.rfind("warning: ", 0) == 0)
                    outcome.warnings.push_back(text.substr(9));
                else if (!text.empty())
                    outcome.error += (outcome.error.empty() ? "" : "; ") +
                                     (text.rfind("gmlcodec: ", 0) == 0 ? text.substr(10) : text);
            }
            if (!outcome.ok && outcome.error.empty())
                outcome.error = "conversion failed";
            std::error_code ignored;
            if (outcome.ok)
                outcome.bytes = fs::file_size(target, ignored);
            return outcome;
        },
        err, "converting");
    std::size_t failed = 0;
    uint64_t bytes = 0;
    for (auto const& outcome : outcomes) {
        failed += outcome.ok ? 0 : 1;
        bytes += outcome.bytes;
    }
    char numbers[64];
    std::snprintf(numbers, sizeof numbers, "%.1f MB, %.2f s",
                  static_cast<double>(bytes) / (1 << 20),
                  std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    out << "converted " << inputs.size() - failed << " of " << inputs.size() << " files to "
        << line.tiles.to << " in " << outDir.string() << ": " << numbers << ", " << threads
        << (threads == 1 ? " job\n" : " jobs\n");
    if (failed > 0)
        err << "gmlcodec: " << failed << " of " << inputs.size() << " files failed\n";
    return failed > 0 ? 1 : 0;
}
