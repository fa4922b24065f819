#include "EnvelopeCollector.h"

#include "../Access.h"
#include "../Numbers.h"

#include <vector>

namespace citygml {

using detail::Access;

void EnvelopeCollector::start(FeatureObject* owner) {
    if (owner)
        m_owner = owner;
    m_positions = 0;
}

void EnvelopeCollector::srsName(std::string_view srs) {
    if (m_owner)
        Access::setSrsName(Access::envelope(*m_owner, m_store), srs);
}

void EnvelopeCollector::set(Corner which, double const* v, int dimension) {
    Envelope& e = Access::envelope(*m_owner, m_store);
    TVec3d point(v[0], v[1], dimension == 3 ? v[2] : 0.0);
    if (which == Corner::Lower)
        Access::setLower(e, point);
    else if (which == Corner::Upper)
        Access::setUpper(e, point);
}

void EnvelopeCollector::corner(Corner which, std::string_view text) {
    if (!m_owner)
        return;
    std::vector<double> v;
    if (!Numbers::parseList(text, v)) {
        m_diagnostics.warn("unreadable envelope corner '" + std::string(text) + "'");
        return;
    }
    Access::envelope(*m_owner, m_store);
    if (v.size() != 2 && v.size() != 3) {
        m_diagnostics.warn("envelope corner without 2 or 3 values");
        return;
    }
    set(which, v.data(), static_cast<int>(v.size()));
}

void EnvelopeCollector::coordinates(std::string_view text) {
    if (!m_owner)
        return;
    std::vector<double> v;
    int dimension = 0;
    if (!Numbers::parseCoordinates(text, ',', ' ', '.', v, dimension)) {
        m_diagnostics.warn("unreadable envelope corner '" + std::string(text) + "'");
        return;
    }
    Access::envelope(*m_owner, m_store);
    if (dimension != 2 && dimension != 3) {
        m_diagnostics.warn("envelope corner without 2 or 3 values");
        return;
    }
    if (v.size() == static_cast<std::size_t>(2 * dimension)) {
        set(Corner::Lower, v.data(), dimension);
        set(Corner::Upper, v.data() + dimension, dimension);
    }
}

} // namespace citygml
