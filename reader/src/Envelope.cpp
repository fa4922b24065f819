#include <citygml/Envelope.h>

namespace citygml {

Envelope::Envelope(TVec3d lower, TVec3d upper, std::string_view srsName)
    : m_lower(lower), m_upper(upper), m_srsName(srsName), m_hasLower(true), m_hasUpper(true) {}

bool Envelope::validBounds() const {
    return m_hasLower && m_hasUpper && m_lower.x <= m_upper.x && m_lower.y <= m_upper.y &&
           m_lower.z <= m_upper.z;
}

} // namespace citygml
