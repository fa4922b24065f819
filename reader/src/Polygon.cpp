#include "ObjectArena.h"

#include <citygml/Polygon.h>

namespace citygml {

Polygon::Polygon(std::string_view id, ObjectArena* arena) : AppearanceTarget(id, arena) {}

std::shared_ptr<LinearRing> Polygon::exteriorRing() const {
    return m_arena->share(m_exterior);
}

std::vector<std::shared_ptr<LinearRing>> Polygon::interiorRings() const {
    std::vector<std::shared_ptr<LinearRing>> out;
    out.reserve(m_interior.size());
    for (LinearRing* ring : m_interior)
        out.push_back(m_arena->share(ring));
    return out;
}

} // namespace citygml
