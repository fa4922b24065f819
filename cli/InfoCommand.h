#pragma once

#include <iosfwd>

class CodecHost;
class CommandLine;

// `gmlcodec info FILE [--json]`: decodes a file and prints what came out.
class InfoCommand {
public:
    // Returns the exit code: 0, or 1 when the file does not load.
    static int run(CodecHost const& host, CommandLine const& line, std::ostream& out,
                   std::ostream& err);
};
