#include <citygml/LinearRing.h>

namespace citygml {

LinearRing::LinearRing(std::string_view id, bool exterior, TVec3d const* vertices,
                       std::size_t count)
    : Object(id), m_vertices(vertices), m_count(count), m_exterior(exterior) {}

} // namespace citygml
