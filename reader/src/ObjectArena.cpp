#include "ObjectArena.h"

#include <sys/mman.h>

#include <cstdint>
#include <cstring>
#include <new>

namespace citygml {

namespace {
// Blocks grow with the model up to this size; a small file stays small.
constexpr std::size_t kLargestBlock = 4 << 20;
// Blocks this large are mapped on their own and asked for huge pages: a city-sized model then
// costs a few hundred page faults instead of tens of thousands.
constexpr std::size_t kHugePage = 2 << 20;
} // namespace

ObjectArena::~ObjectArena() {
    for (Destructor const& d : m_destructors)
        d.destroy(d.object);
    for (Block const& b : m_blocks) {
        if (b.mapped)
            munmap(b.data, b.size);
        else
            delete[] b.data;
    }
}

ObjectArena::Block ObjectArena::newBlock(std::size_t size) {
    if (size < kHugePage || size % kHugePage != 0)
        return {new unsigned char[size], size, false};
    // Map one huge page more than needed, then cut the start back to a huge-page boundary.
    std::size_t span = size + kHugePage;
    void* p = mmap(nullptr, span, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (p == MAP_FAILED)
        throw std::bad_alloc();
    auto start = reinterpret_cast<std::uintptr_t>(p);
    std::uintptr_t aligned = (start + kHugePage - 1) & ~(kHugePage - 1);
    if (aligned > start)
        munmap(p, aligned - start);
    if (std::uintptr_t end = start + span; end > aligned + size)
        munmap(reinterpret_cast<void*>(aligned + size), end - (aligned + size));
    auto* data = reinterpret_cast<unsigned char*>(aligned);
#ifdef MADV_HUGEPAGE
    madvise(data, size, MADV_HUGEPAGE);
#endif
    return {data, size, true};
}

void* ObjectArena::allocate(std::size_t bytes, std::size_t alignment) {
    auto pad = [&] {
        auto address = reinterpret_cast<std::uintptr_t>(m_next);
        return (alignment - address % alignment) % alignment;
    };
    if (!m_next || pad() + bytes > m_left) {
        std::size_t size = bytes + alignment > m_blockSize ? bytes + alignment : m_blockSize;
        // Left uninitialised: every object is constructed in place.
        m_blocks.reserve(m_blocks.size() + 1);
        m_blocks.push_back(newBlock(size));
        m_next = m_blocks.back().data;
        m_left = size;
        if (m_blockSize < kLargestBlock)
            m_blockSize *= 2;
    }
    std::size_t skip = pad();
    void* result = m_next + skip;
    m_next += skip + bytes;
    m_left -= skip + bytes;
    return result;
}

std::string_view ObjectArena::copy(std::string_view text) {
    if (text.empty())
        return {};
    auto* out = static_cast<char*>(allocate(text.size(), 1));
    std::memcpy(out, text.data(), text.size());
    return {out, text.size()};
}

} // namespace citygml
