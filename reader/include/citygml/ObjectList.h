#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <type_traits>

namespace citygml {

// A growable list of plain values whose storage comes from the model's arena, so that it needs no
// destructor: the model's objects hold these instead of std::vector.
template <class T> class ObjectList {
    static_assert(std::is_trivially_copyable_v<T> && std::is_trivially_destructible_v<T>);

public:
    std::size_t size() const { return m_size; }
    bool empty() const { return m_size == 0; }
    T const* begin() const { return m_data; }
    T const* end() const { return m_data + m_size; }
    T* begin() { return m_data; }
    T* end() { return m_data + m_size; }
    T const& operator[](std::size_t i) const { return m_data[i]; }
    T& operator[](std::size_t i) { return m_data[i]; }
    T const& at(std::size_t i) const {
        if (i >= m_size)
            throw std::out_of_range("citygml: index out of range");
        return m_data[i];
    }

    // `arena` provides `T* array<T>(count)`.
    template <class Arena> void push_back(Arena& arena, T value) {
        if (m_size == m_capacity) {
            std::uint32_t capacity = m_capacity ? 2 * m_capacity : 4;
            T* data = arena.template array<T>(capacity);
            if (m_size)
                std::memcpy(static_cast<void*>(data), m_data, m_size * sizeof(T));
            m_data = data;
            m_capacity = capacity;
        }
        m_data[m_size++] = value;
    }

    void removeNulls() {
        std::uint32_t kept = 0;
        for (std::uint32_t i = 0; i < m_size; ++i)
            if (m_data[i])
                m_data[kept++] = m_data[i];
        m_size = kept;
    }

private:
    T* m_data = nullptr;
    std::uint32_t m_size = 0;
    std::uint32_t m_capacity = 0;
};

} // namespace citygml
