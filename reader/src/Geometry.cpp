#include <citygml/Geometry.h>

namespace citygml {

Geometry::Geometry(std::string id, GeometryType type, unsigned int lod)
    : AppearanceTarget(std::move(id)), m_type(type), m_lod(lod), m_tag(nullptr) {}

} // namespace citygml
