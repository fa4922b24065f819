#include "BlockWriter.h"

#include <algorithm>

BlockWriter::BlockWriter(std::ostream& stream) : out(stream), block(new char[Size]) {}

BlockWriter::~BlockWriter() {
    flush();
}

void BlockWriter::pad(uint64_t n, char c) {
    while (n > 0) {
        std::size_t const piece = static_cast<std::size_t>(std::min<uint64_t>(n, Size));
        if (piece > Size - used)
            flush();
        std::memset(block.get() + used, c, piece);
        used += piece;
        n -= piece;
    }
}

void BlockWriter::flush() {
    out.write(block.get(), static_cast<std::streamsize>(used));
    used = 0;
}

// A piece that does not fit: the block goes first, then a large piece directly.
void BlockWriter::spill(void const* data, std::size_t n) {
    flush();
    if (n >= Size) {
        out.write(static_cast<char const*>(data), static_cast<std::streamsize>(n));
        return;
    }
    std::memcpy(block.get(), data, n);
    used = n;
}
