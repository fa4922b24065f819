#include "ObjectArena.h"

#include <cstdint>

namespace citygml {

namespace {
// Under the allocator's mmap threshold, so blocks come from the heap without page faults.
constexpr std::size_t kBlockSize = 64 << 10;
} // namespace

void* ObjectArena::allocate(std::size_t bytes, std::size_t alignment) {
    auto pad = [&] {
        auto address = reinterpret_cast<std::uintptr_t>(m_next);
        return (alignment - address % alignment) % alignment;
    };
    if (!m_next || pad() + bytes > m_left) {
        std::size_t size = bytes + alignment > kBlockSize ? bytes + alignment : kBlockSize;
        // Left uninitialised: every object is constructed in place.
        m_blocks.emplace_back(new unsigned char[size]);
        m_next = m_blocks.back().get();
        m_left = size;
    }
    std::size_t skip = pad();
    void* result = m_next + skip;
    m_next += skip + bytes;
    m_left -= skip + bytes;
    return result;
}

} // namespace citygml
