#pragma once

#include <cstddef>
#include <memory>
#include <vector>

namespace citygml {

// Bump storage for the millions of polygons and rings of one model. Nothing is returned to it
// one by one: the blocks go all at once when the last object made in it is gone, which spares
// the allocator the long, scattered free of a model's teardown.
class ObjectArena {
public:
    void* allocate(std::size_t bytes, std::size_t alignment);

private:
    std::vector<std::unique_ptr<unsigned char[]>> m_blocks;
    unsigned char* m_next = nullptr;
    std::size_t m_left = 0;
};

// Allocator for std::allocate_shared; every control block keeps the arena alive.
template <class T> class ArenaAllocator {
public:
    using value_type = T;

    explicit ArenaAllocator(std::shared_ptr<ObjectArena> arena) : m_arena(std::move(arena)) {}
    template <class U> ArenaAllocator(ArenaAllocator<U> const& o) : m_arena(o.m_arena) {}

    T* allocate(std::size_t n) {
        return static_cast<T*>(m_arena->allocate(n * sizeof(T), alignof(T)));
    }
    void deallocate(T*, std::size_t) noexcept {}

    template <class U> bool operator==(ArenaAllocator<U> const& o) const {
        return m_arena == o.m_arena;
    }
    template <class U> bool operator!=(ArenaAllocator<U> const& o) const { return !(*this == o); }

private:
    template <class U> friend class ArenaAllocator;
    std::shared_ptr<ObjectArena> m_arena;
};

} // namespace citygml
