#pragma once

#include "CodecHost.h"

// The codec loaded once for the whole test program, as the tool loads it: a library is
// registered with the host's manager only the first time it is loaded.
inline CodecHost const& host() {
    static CodecHost const instance(KOLT_CODEC_DIR);
    return instance;
}
