#include "ObjectArena.h"

#include <citygml/Geometry.h>

namespace citygml {

Geometry::Geometry(std::string_view id, GeometryType type, unsigned int lod, ObjectArena* arena)
    : AppearanceTarget(id, arena), m_type(type), m_lod(lod), m_tag(nullptr) {}

std::shared_ptr<Polygon const> Geometry::getPolygon(unsigned int i) const {
    return m_arena->share(static_cast<Polygon const*>(m_polygons.at(i)));
}

} // namespace citygml
