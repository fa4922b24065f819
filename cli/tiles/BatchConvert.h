#pragma once

#include <iosfwd>

class CodecHost;
class CommandLine;

// `gmlcodec convert DIR OUTDIR --to obj|glb|gltf|gml`: every CityGML file below DIR, converted
// on several threads into the same layout below OUTDIR, going on past failures.
class BatchConvert {
public:
    // Returns the exit code: 0, or 1 when any file failed.
    static int run(CodecHost const& host, CommandLine const& line, std::ostream& out,
                   std::ostream& err);
};
