#pragma once
// Takes the bytes and keeps only their count, so that no container growth is measured.
#include <cstddef>
#include <streambuf>

class CountingBuffer : public std::streambuf {
public:
    std::size_t count = 0;

protected:
    std::streamsize xsputn(char const*, std::streamsize n) override {
        count += static_cast<std::size_t>(n);
        return n;
    }
    int_type overflow(int_type ch) override {
        ++count;
        return ch;
    }
};
