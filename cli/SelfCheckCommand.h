#pragma once

#include <iosfwd>

class CodecHost;

// `gmlcodec selfcheck`: shows that the codec loaded and what it registered.
class SelfCheckCommand {
public:
    // Returns 0 when the codec registered its decoder, 1 otherwise.
    static int run(CodecHost const& host, std::ostream& out, std::ostream& err);
};
