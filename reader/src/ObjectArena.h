#pragma once

#include <cstddef>
#include <memory>
#include <new>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace citygml {

// Storage for everything one model holds many of: city objects, geometries, polygons, rings,
// their vertices, ids and paths. Objects are placed one after another in large blocks and
// destroyed together, in the order they were made, when the last owner lets go; a model's
// teardown is then a walk through a few large blocks instead of millions of scattered frees.
// Shared pointers to objects inside alias the arena's own count (see share()).
class ObjectArena : public std::enable_shared_from_this<ObjectArena> {
public:
    ObjectArena() = default;
    ~ObjectArena();
    ObjectArena(ObjectArena const&) = delete;
    ObjectArena& operator=(ObjectArena const&) = delete;

    void* allocate(std::size_t bytes, std::size_t alignment);

    template <class T, class... Args> T* create(Args&&... args) {
        T* object = new (allocate(sizeof(T), alignof(T))) T(std::forward<Args>(args)...);
        if constexpr (!std::is_trivially_destructible_v<T>) {
            try {
                addDestructor(object, [](void* p) { static_cast<T*>(p)->~T(); });
            } catch (...) {
                object->~T();
                throw;
            }
        }
        return object;
    }

    // Uninitialised room for `count` values of a trivial type.
    template <class T> T* array(std::size_t count) {
        static_assert(std::is_trivially_copyable_v<T> && std::is_trivially_destructible_v<T>);
        return static_cast<T*>(allocate(count * sizeof(T), alignof(T)));
    }

    // A copy of `text` that lives as long as the arena.
    std::string_view copy(std::string_view text);

    // A shared pointer to an object inside that keeps the whole arena alive.
    template <class T> std::shared_ptr<T> share(T* object) const {
        if (!object)
            return nullptr;
        return std::shared_ptr<T>(shared_from_this(), object);
    }

private:
    struct Destructor {
        void* object;
        void (*destroy)(void*);
    };
    // Destructors are recorded in the arena itself, in chunks, in the order of creation.
    struct DestructorChunk {
        static constexpr std::size_t Capacity = 510;
        DestructorChunk* next;
        std::size_t count;
        Destructor items[Capacity];
    };
    void addDestructor(void* object, void (*destroy)(void*));

    struct Block {
        unsigned char* data;
        std::size_t size;
        bool mapped;
    };
    static Block newBlock(std::size_t size);
    static void releaseBlock(Block const& block);
    std::vector<Block> m_blocks;
    DestructorChunk* m_firstChunk = nullptr;
    DestructorChunk* m_lastChunk = nullptr;
    unsigned char* m_next = nullptr;
    std::size_t m_left = 0;
    std::size_t m_blockSize = 64 << 10;
};

} // namespace citygml
