#pragma once

#include <cstddef>
#include <functional>
#include <string_view>
#include <vector>

namespace citygml {

// An open-addressing map from ids to pointers, filled once after the read: one allocation for
// millions of polygons instead of one node each. Keys point into the model's storage. Each slot
// keeps the key's hash, so a probe compares the text only when the hash matches.
template <class T> class IdTable {
public:
    void reserve(std::size_t count) {
        std::size_t size = 16;
        while (size < 2 * count)
            size *= 2;
        m_slots.assign(size, Slot{});
        m_used = 0;
    }

    // Keeps the first entry of an id.
    void insert(std::string_view id, T* value) {
        if (2 * (m_used + 1) > m_slots.size())
            grow();
        std::size_t hash = std::hash<std::string_view>()(id);
        std::size_t mask = m_slots.size() - 1;
        for (std::size_t i = hash & mask;; i = (i + 1) & mask) {
            Slot& slot = m_slots[i];
            if (!slot.value) {
                slot = {hash, id, value};
                ++m_used;
                return;
            }
            if (slot.hash == hash && slot.id == id)
                return;
        }
    }

    T* find(std::string_view id) const {
        if (m_slots.empty())
            return nullptr;
        std::size_t hash = std::hash<std::string_view>()(id);
        std::size_t mask = m_slots.size() - 1;
        for (std::size_t i = hash & mask;; i = (i + 1) & mask) {
            Slot const& slot = m_slots[i];
            if (!slot.value)
                return nullptr;
            if (slot.hash == hash && slot.id == id)
                return slot.value;
        }
    }

    void clear() {
        std::vector<Slot>().swap(m_slots);
        m_used = 0;
    }

private:
    struct Slot {
        std::size_t hash = 0;
        std::string_view id;
        T* value = nullptr;
    };

    void grow() {
        std::vector<Slot> old;
        old.swap(m_slots);
        reserve(old.size() < 8 ? 8 : old.size());
        for (Slot const& slot : old)
            if (slot.value)
                insert(slot.id, slot.value);
    }

    std::vector<Slot> m_slots;
    std::size_t m_used = 0;
};

} // namespace citygml
