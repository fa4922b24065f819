#pragma once

#include <cstddef>
#include <functional>
#include <string_view>
#include <utility>
#include <vector>

namespace citygml {

// An open-addressing map from ids to pointers, filled once after the read: one allocation for
// millions of polygons instead of one node each. Keys point into the objects themselves.
template <class T> class IdTable {
public:
    void reserve(std::size_t count) {
        std::size_t size = 16;
        while (size < 2 * count)
            size *= 2;
        m_slots.assign(size, {std::string_view(), nullptr});
        m_used = 0;
    }

    // Keeps the first entry of an id.
    void insert(std::string_view id, T* value) {
        if (2 * (m_used + 1) > m_slots.size())
            grow();
        std::size_t mask = m_slots.size() - 1;
        for (std::size_t i = std::hash<std::string_view>()(id) & mask;; i = (i + 1) & mask) {
            if (!m_slots[i].second) {
                m_slots[i] = {id, value};
                ++m_used;
                return;
            }
            if (m_slots[i].first == id)
                return;
        }
    }

    T* find(std::string_view id) const {
        if (m_slots.empty())
            return nullptr;
        std::size_t mask = m_slots.size() - 1;
        for (std::size_t i = std::hash<std::string_view>()(id) & mask;; i = (i + 1) & mask) {
            if (!m_slots[i].second)
                return nullptr;
            if (m_slots[i].first == id)
                return m_slots[i].second;
        }
    }

    void clear() {
        std::vector<std::pair<std::string_view, T*>>().swap(m_slots);
        m_used = 0;
    }

private:
    void grow() {
        std::vector<std::pair<std::string_view, T*>> old;
        old.swap(m_slots);
        reserve(old.size() < 8 ? 8 : old.size());
        for (auto const& [id, value] : old)
            if (value)
                insert(id, value);
    }

    std::vector<std::pair<std::string_view, T*>> m_slots;
    std::size_t m_used = 0;
};

} // namespace citygml
