#pragma once

#include <citygml/Object.h>
#include <citygml/TVec3.h>

#include <vector>

namespace citygml {

// A closed ring: the last position always repeats the first, and there are at least four.
class LinearRing : public Object {
public:
    LinearRing(std::string id, bool exterior);

    bool isExterior() const { return m_exterior; }
    std::vector<TVec3d> const& getVertices() const { return m_vertices; }

private:
    friend class ModelBuilder;
    std::vector<TVec3d> m_vertices;
    bool m_exterior;
};

} // namespace citygml
