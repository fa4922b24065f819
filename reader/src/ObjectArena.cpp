#include "ObjectArena.h"

#include <sys/mman.h>

#include <cstdint>
#include <cstring>
#include <mutex>
#include <new>

namespace citygml {

namespace {
// Blocks grow with the model up to this size; a small file stays small.
constexpr std::size_t kLargestBlock = 4 << 20;
// Blocks this large are mapped on their own and asked for huge pages: a city-sized model then
// costs a few hundred page faults instead of tens of thousands.
constexpr std::size_t kHugePage = 2 << 20;
// Blocks of models that are gone wait here for the next model, up to this many bytes: a host
// that reads file after file then reuses memory it has already touched instead of faulting in
// fresh pages for every file.
constexpr std::size_t kCacheLimit = 64 << 20;

struct CachedBlock {
    unsigned char* data;
    std::size_t size;
    bool mapped;
};

class BlockCache {
public:
    bool take(std::size_t size, CachedBlock& out) {
        std::lock_guard<std::mutex> lock(m_mutex);
        for (std::size_t i = m_blocks.size(); i-- > 0;)
            if (m_blocks[i].size == size) {
                out = m_blocks[i];
                m_blocks.erase(m_blocks.begin() + static_cast<std::ptrdiff_t>(i));
                m_bytes -= size;
                return true;
            }
        return false;
    }

    // Only the standard sizes come back; an odd one made for one large array would never fit.
    bool keep(CachedBlock const& block) {
#if defined(__SANITIZE_ADDRESS__)
        // Reused memory would hide a use after free from the sanitizer.
        return false;
#endif
        if (block.size > kLargestBlock || (block.size & (block.size - 1)) != 0)
            return false;
        std::lock_guard<std::mutex> lock(m_mutex);
        if (m_bytes + block.size > kCacheLimit)
            return false;
        try {
            m_blocks.push_back(block);
        } catch (std::bad_alloc const&) {
            return false;
        }
        m_bytes += block.size;
        return true;
    }

private:
    std::mutex m_mutex;
    std::vector<CachedBlock> m_blocks;
    std::size_t m_bytes = 0;
};

// Never destroyed: models may outlive static destruction.
BlockCache& blockCache() {
    static BlockCache* cache = new BlockCache;
    return *cache;
}

} // namespace

ObjectArena::~ObjectArena() {
    for (DestructorChunk* c = m_firstChunk; c; c = c->next)
        for (std::size_t i = 0; i < c->count; ++i)
            c->items[i].destroy(c->items[i].object);
    for (Block const& b : m_blocks)
        if (!blockCache().keep({b.data, b.size, b.mapped}))
            releaseBlock(b);
}

void ObjectArena::addDestructor(void* object, void (*destroy)(void*)) {
    if (!m_lastChunk || m_lastChunk->count == DestructorChunk::Capacity) {
        auto* chunk = static_cast<DestructorChunk*>(
            allocate(sizeof(DestructorChunk), alignof(DestructorChunk)));
        chunk->next = nullptr;
        chunk->count = 0;
        (m_lastChunk ? m_lastChunk->next : m_firstChunk) = chunk;
        m_lastChunk = chunk;
    }
    m_lastChunk->items[m_lastChunk->count++] = {object, destroy};
}

void ObjectArena::releaseBlock(Block const& block) {
    if (block.mapped)
        munmap(block.data, block.size);
    else
        delete[] block.data;
}

ObjectArena::Block ObjectArena::newBlock(std::size_t size) {
    if (CachedBlock cached{}; blockCache().take(size, cached))
        return {cached.data, cached.size, cached.mapped};
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
