#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <ostream>

// Collects small pieces of bytes and hands them to a stream in blocks of 1 MiB: one write call
// per block instead of one per vertex. Flushes what is left when destroyed.
class BlockWriter {
public:
    explicit BlockWriter(std::ostream& out);
    ~BlockWriter();
    BlockWriter(BlockWriter const&) = delete;
    BlockWriter& operator=(BlockWriter const&) = delete;

    void put(void const* data, std::size_t n) {
        if (n > Size - used)
            spill(data, n);
        else {
            std::memcpy(block.get() + used, data, n);
            used += n;
        }
    }
    // Room for `n` bytes (at most 64 KiB) written in place, then taken with `advance`.
    char* room(std::size_t n) {
        if (n > Size - used)
            flush();
        return block.get() + used;
    }
    void advance(std::size_t n) { used += n; }
    // `n` bytes of `c`.
    void pad(uint64_t n, char c = 0);
    void flush();

private:
    void spill(void const* data, std::size_t n);

    static constexpr std::size_t Size = 1 << 20;
    std::ostream& out;
    std::unique_ptr<char[]> block;
    std::size_t used = 0;
};
