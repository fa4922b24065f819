#include "CountingStreamBuf.h"

#include <utility>

CountingStreamBuf::CountingStreamBuf(std::streambuf& sourceBuffer, Progress onProgress,
                                     std::size_t chunkSize)
    : source(sourceBuffer), progress(std::move(onProgress)), buffer(chunkSize > 0 ? chunkSize : 1) {
    setg(buffer.data(), buffer.data(), buffer.data());
}

CountingStreamBuf::int_type CountingStreamBuf::underflow() {
    if (gptr() < egptr())
        return traits_type::to_int_type(*gptr());
    std::streamsize const got =
        source.sgetn(buffer.data(), static_cast<std::streamsize>(buffer.size()));
    if (got <= 0)
        return traits_type::eof();
    total += static_cast<uint64_t>(got);
    setg(buffer.data(), buffer.data(), buffer.data() + got);
    if (progress)
        progress(total);
    return traits_type::to_int_type(*gptr());
}
