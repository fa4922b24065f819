#pragma once

#include "encoder/SimpleOutputCallbackStreamBuf.h"

#include <ostream>

namespace common {

// An output stream onto one host output. Asking for the position once at construction makes the
// host see a seek and a tell before the first bytes, as encoders of this kind always did.
template <typename CharT, int Unused>
class SimpleOutputCallbackOStream : public std::basic_ostream<CharT> {
public:
    SimpleOutputCallbackOStream(kolt::SimpleOutputCallbacks* callbacks, std::uint64_t handle)
        : std::basic_ostream<CharT>(nullptr), streamBuf(callbacks, handle) {
        this->init(&streamBuf);
        this->tellp();
    }

private:
    SimpleOutputCallbackStreamBuf<CharT, Unused> streamBuf;
};

} // namespace common
