#pragma once

#include <citygml/Object.h>
#include <citygml/TVec3.h>

#include <cstddef>
#include <vector>

namespace citygml {

// A closed ring: the last position always repeats the first, and there are at least four.
class LinearRing : public Object {
public:
    // `id` and `vertices` live in the model's storage.
    LinearRing(std::string_view id, bool exterior, TVec3d const* vertices, std::size_t count);

    bool isExterior() const { return m_exterior; }
    // A copy of the positions; the ring keeps them in the model's storage.
    std::vector<TVec3d> getVertices() const { return {m_vertices, m_vertices + m_count}; }
    // The same positions without a copy, valid as long as the ring.
    TVec3d const* vertexData() const { return m_vertices; }
    std::size_t vertexCount() const { return m_count; }

private:
    TVec3d const* m_vertices;
    std::size_t m_count;
    bool m_exterior;
};

} // namespace citygml
