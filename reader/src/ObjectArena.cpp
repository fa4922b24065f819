#include "ObjectArena.h"

#include <cstdint>
#include <cstring>

namespace citygml {

namespace {
// Blocks grow with the model up to this size; a small file stays small.
constexpr std::size_t kLargestBlock = 4 << 20;
} // namespace

ObjectArena::~ObjectArena() {
    for (Destructor const& d : m_destructors)
        d.destroy(d.object);
}

void* ObjectArena::allocate(std::size_t bytes, std::size_t alignment) {
    auto pad = [&] {
        auto address = reinterpret_cast<std::uintptr_t>(m_next);
        return (alignment - address % alignment) % alignment;
    };
    if (!m_next || pad() + bytes > m_left) {
        std::size_t size = bytes + alignment > m_blockSize ? bytes + alignment : m_blockSize;
        // Left uninitialised: every object is constructed in place.
        m_blocks.emplace_back(new unsigned char[size]);
        m_next = m_blocks.back().get();
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
