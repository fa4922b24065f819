#pragma once

#include <iosfwd>

class CodecHost;
class CommandLine;

// `gmlcodec tiles IN... OUTDIR`, `tiles --part IN OUTDIR` and `tiles --merge OUTDIR`.
class TilesCommand {
public:
    // Returns the exit code: 0, or 1 when any file or the merge failed.
    static int run(CodecHost const& host, CommandLine const& line, std::ostream& out,
                   std::ostream& err);
};
