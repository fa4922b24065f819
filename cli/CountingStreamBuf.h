#pragma once

#include <cstdint>
#include <functional>
#include <streambuf>
#include <vector>

// Reads through another stream buffer in large chunks and reports the bytes read so far, so a
// decoder that reads a std::istream can show its progress without knowing it.
class CountingStreamBuf : public std::streambuf {
public:
    using Progress = std::function<void(uint64_t bytesRead)>;

    CountingStreamBuf(std::streambuf& source, Progress progress, std::size_t chunkSize = 1 << 16);

    uint64_t bytesRead() const { return total; }

protected:
    int_type underflow() override;

private:
    std::streambuf& source;
    Progress progress;
    std::vector<char> buffer;
    uint64_t total = 0;
};
