#pragma once

#include "FileBatch.h"

#include <filesystem>
#include <string>

class CodecHost;
class CommandLine;

// One input file's share of a tileset: `OUTDIR/parts/NAME/` with a tileset of its own (GLB
// tiles, each in an east-north-up frame at its centre placed by the tile's transform) and
// `index.json` (file, features, tiles, bytes, region, geometric error, tileset path), which
// the merge reads. The folder appears complete or not at all.
class TilePart {
public:
    static constexpr char const* PartsFolder = "parts";
    static constexpr char const* IndexName = "index.json";

    // Decodes `input` and writes its part below `outDir`. Throws std::runtime_error with the
    // reason when the file cannot be tiled. The decoded model of the `last` file of a run is
    // left to the end of the process, which reclaims it far faster than freeing it mesh by mesh.
    static FileBatch::Outcome write(CodecHost const& host, CommandLine const& line,
                                    std::string const& input, std::filesystem::path const& outDir,
                                    bool last = false);

    // The part's folder name: the file's stem and a hash of its absolute path, so that files
    // of one name in different folders keep apart and every run names a file alike.
    static std::string name(std::string const& input);
};
