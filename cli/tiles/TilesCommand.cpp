#include "TilesCommand.h"

#include "CommandLine.h"
#include "FileBatch.h"
#include "TilePart.h"
#include "TilesetMerge.h"
#include "UsageError.h"

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <ostream>

namespace fs = std::filesystem;

namespace {

std::string megabytes(uint64_t bytes) {
    char text[32];
    std::snprintf(text, sizeof text, "%.1f MB", static_cast<double>(bytes) / (1 << 20));
    return text;
}

} // namespace

int TilesCommand::run(CodecHost const& host, CommandLine const& line, std::ostream& out,
                      std::ostream& err) {
    auto const start = std::chrono::steady_clock::now();
    auto const seconds = [&] {
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    };
    TilesOptions const& options = line.tiles;
    if (options.part && options.merge)
        throw UsageError("tiles takes --part or --merge, not both");
    if (options.merge && line.files.size() != 1)
        throw UsageError("tiles --merge needs the output folder only");
    if (options.part && line.files.size() != 2)
        throw UsageError("tiles --part needs one input file and the output folder");
    if (line.files.size() < 2 && !options.merge)
        throw UsageError("tiles needs input files or folders and an output folder");
    fs::path const outDir = line.files.back();

    bool anyBad = false;
    if (options.merge) {
        TilesetMerge::Totals const t = TilesetMerge::run(outDir, {}, err, anyBad);
        out << "wrote " << (outDir / "tileset.json").string() << ": " << t.parts << " parts, "
            << t.features << " features, " << t.tiles << " tiles, " << megabytes(t.bytes) << "\n";
        return anyBad ? 1 : 0;
    }

    std::vector<FileBatch::Input> const inputs =
        FileBatch::expand(std::vector<std::string>(line.files.begin(), line.files.end() - 1));
    if (inputs.empty())
        throw std::runtime_error("no CityGML files (.gml, .citygml, .xml) in the inputs");
    fs::create_directories(outDir);
    unsigned const threads = options.part ? 1 : options.threads();
    std::vector<FileBatch::Outcome> const outcomes = FileBatch::run(
        inputs, threads,
        [&](FileBatch::Input const& input) {
            return TilePart::write(host, line, input.path, outDir, input.last);
        },
        err, "tiling");

    uint64_t features = 0, tiles = 0, bytes = 0, inputBytes = 0;
    std::size_t failed = 0;
    std::vector<std::string> names;
    for (std::size_t i = 0; i < inputs.size(); ++i) {
        inputBytes += inputs[i].size;
        if (!outcomes[i].ok) {
            ++failed;
            continue;
        }
        features += outcomes[i].features;
        tiles += outcomes[i].tiles;
        bytes += outcomes[i].bytes;
        names.push_back(TilePart::name(inputs[i].path));
    }
    if (!options.part && !names.empty()) {
        try {
            TilesetMerge::run(outDir, names, err, anyBad);
        } catch (std::exception const& e) {
            err << "gmlcodec: " << e.what() << "\n";
            anyBad = true;
        }
    }
    char time[32];
    std::snprintf(time, sizeof time, "%.2f s", seconds());
    out << (options.part ? "wrote part " : "wrote ")
        << (options.part ? (outDir / TilePart::PartsFolder / TilePart::name(inputs[0].path))
                         : (outDir / "tileset.json"))
               .string()
        << ": " << inputs.size() - failed << " of " << inputs.size() << " files ("
        << megabytes(inputBytes) << "), " << features << " features, " << tiles << " tiles, "
        << megabytes(bytes) << " written, " << time << ", " << threads
        << (threads == 1 ? " job\n" : " jobs\n");
    if (failed > 0)
        err << "gmlcodec: " << failed << " of " << inputs.size() << " files failed\n";
    return failed > 0 || anyBad ? 1 : 0;
}
