#pragma once

#include <iosfwd>

class CodecHost;
class CommandLine;
class TextureAccess;

// `gmlcodec convert IN OUT`: picks the conversion by the two file extensions.
class ConvertCommand {
public:
    // Returns the exit code: 0, 1 when the conversion failed; throws UsageError for a pair of
    // extensions it cannot convert.
    static int run(CodecHost const& host, CommandLine const& line, std::ostream& out,
                   std::ostream& err);

private:
    static int gmlToObj(CodecHost const& host, CommandLine const& line,
                        TextureAccess const& textures, std::ostream& out, std::ostream& err);
};
