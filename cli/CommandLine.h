#pragma once

#include "EncodeOptions.h"
#include "gltf/MeshOutputOptions.h"
#include "tiles/TilesOptions.h"

#include <string>
#include <vector>

// The parsed command line: one command, its file arguments and the options the tool knows.
// Options may stand anywhere after the program name; "--" ends them.
class CommandLine {
public:
    // Throws UsageError for an unknown option or a missing option value.
    static CommandLine parse(std::vector<std::string> const& arguments);

    static std::string usage();

    std::string command; // "info", "convert", "tiles", "selfcheck", "help" or "version"
    std::vector<std::string> files;
    bool json = false;
    bool names = false;                    // info lists every mesh name
    std::string extensionsDir;             // empty: the folder of the executable
    EncodeOptions encode;                  // options of a conversion to .gml
    MeshOutputOptions mesh;                // options of conversions to .obj, .glb and .gltf
    bool verbose = false;                  // every reader warning, not a summary
    std::vector<std::string> textureRoots; // folders textures may come from besides the input's
    bool anyTexturePath = false;           // textures may come from anywhere
    TilesOptions tiles;                    // options of runs over many files
};
