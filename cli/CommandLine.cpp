#include "CommandLine.h"

#include "UsageError.h"

CommandLine CommandLine::parse(std::vector<std::string> const& arguments) {
    CommandLine line;
    bool optionsEnded = false;
    std::vector<std::string> positionals;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        std::string const& arg = arguments[i];
        if (optionsEnded || arg.empty() || arg[0] != '-' || arg == "-") {
            positionals.push_back(arg);
        } else if (arg == "--") {
            optionsEnded = true;
        } else if (arg == "--help" || arg == "-h") {
            line.command = "help";
        } else if (arg == "--version") {
            if (line.command != "help")
                line.command = "version";
        } else if (arg == "--json") {
            line.json = true;
        } else if (arg == "--names") {
            line.names = true;
        } else if (arg == "--verbose" || arg == "-v") {
            line.verbose = true;
        } else if (arg == "--any-texture-path") {
            line.anyTexturePath = true;
        } else if (arg == "--texture-root" || arg.rfind("--texture-root=", 0) == 0) {
            std::string root;
            if (arg == "--texture-root" && i + 1 < arguments.size())
                root = arguments[++i];
            else if (arg != "--texture-root")
                root = arg.substr(std::string("--texture-root=").size());
            if (root.empty())
                throw UsageError("option --texture-root needs a folder");
            line.textureRoots.push_back(root);
        } else if (arg == "--extensions" || arg.rfind("--extensions=", 0) == 0) {
            if (arg == "--extensions") {
                if (i + 1 >= arguments.size())
                    throw UsageError("option --extensions needs a folder");
                line.extensionsDir = arguments[++i];
            } else {
                line.extensionsDir = arg.substr(std::string("--extensions=").size());
            }
            if (line.extensionsDir.empty())
                throw UsageError("option --extensions needs a folder");
        } else if (!line.encode.consume(arguments, i) && !line.mesh.consume(arguments, i) &&
                   !line.tiles.consume(arguments, i)) {
            throw UsageError("unknown option " + arg);
        }
    }
    if (!line.command.empty())
        return line; // --help and --version need nothing else
    if (positionals.empty())
        throw UsageError("no command given");
    line.command = positionals.front();
    line.files.assign(positionals.begin() + 1, positionals.end());
    if (line.command == "help" || line.command == "version") {
        // accepted as words too
    } else if (line.command == "selfcheck") {
        if (!line.files.empty())
            throw UsageError("selfcheck takes no arguments");
    } else if (line.command == "info") {
        if (line.files.size() != 1)
            throw UsageError("info needs exactly one input file");
    } else if (line.command == "convert") {
        if (line.files.size() != 2)
            throw UsageError("convert needs an input and an output file");
    } else if (line.command == "tiles") {
        if (line.files.empty())
            throw UsageError("tiles needs input files or folders and an output folder");
    } else {
        throw UsageError("unknown command " + line.command);
    }
    return line;
}

std::string CommandLine::usage() {
    return "Usage:\n"
           "  gmlcodec info FILE.gml [--json]     summarise what the codec decodes from a file\n"
           "  gmlcodec convert IN.gml OUT.obj     convert CityGML to OBJ (with .mtl, textures and\n"
           "                                      an attributes file beside it)\n"
           "  gmlcodec convert IN.obj OUT.gml     convert OBJ (with its .mtl and textures) to "
           "CityGML\n"
           "  gmlcodec convert IN.gml OUT.gml     decode and encode again, feature hierarchy kept\n"
           "  gmlcodec convert IN OUT.glb|.gltf   CityGML or OBJ to glTF 2.0, georeferenced\n"
           "                                      (.gml, .citygml and .xml are all CityGML)\n"
           "  gmlcodec convert DIR OUTDIR --to F  every CityGML file below DIR to obj, glb, gltf\n"
           "                                      or gml, in the same layout below OUTDIR\n"
           "  gmlcodec tiles IN... OUTDIR         files and folders to one 3D Tiles 1.1 tileset\n"
           "  gmlcodec tiles --part IN OUTDIR     one file's part of the tileset\n"
           "  gmlcodec tiles --merge OUTDIR       the root tileset over all parts in OUTDIR\n"
           "  gmlcodec selfcheck                  load the codec and list its factories\n"
           "  gmlcodec --help | --version\n"
           "\n"
           "Options:\n"
           "  --json              info prints one JSON object\n"
           "  --names             info lists every mesh name, not only the first and last\n"
           "  --extensions DIR    load the codec from DIR instead of the tool's own folder\n"
           "  --verbose, -v       list every problem the reader reported, not the first few\n"
           "  --texture-root DIR  also read textures below DIR (repeatable); by default only\n"
           "                      files in the input's own folder and below are read\n"
           "  --any-texture-path  read textures wherever the input says they are\n"
           "\n" +
           EncodeOptions::usage() + "\n" + MeshOutputOptions::usage() + "\n" +
           TilesOptions::usage() +
           "\n"
           "Exit codes: 0 success, 1 the work failed, 2 usage error.\n";
}
