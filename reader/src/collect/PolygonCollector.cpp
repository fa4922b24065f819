#include "PolygonCollector.h"

#include "../Access.h"
#include "../Numbers.h"

#include <algorithm>
#include <cmath>

namespace citygml {

using detail::Access;

PolygonCollector::PolygonCollector(ObjectArena& store, Diagnostics const& diagnostics,
                                   TesselatorBase* tesselator)
    : m_store(store), m_diagnostics(diagnostics), m_tesselator(tesselator) {}

void PolygonCollector::startPolygon(std::string_view id, std::string_view documentId, int line) {
    m_polygon = m_store.create<Polygon>(id, &m_store);
    m_polygonDocumentId = documentId;
    m_polygonLine = line;
    m_exteriorFault.clear();
}

void PolygonCollector::startRing(bool exterior, std::string_view id, std::string_view documentId,
                                 int line) {
    m_inRing = true;
    m_ringExterior = exterior;
    m_ringId = id;
    m_ringDocumentId = documentId;
    m_ringLine = line;
    m_ringFault.clear();
    m_ringVertices.clear();
}

void PolygonCollector::fault(std::string reason) {
    if (m_ringFault.empty())
        m_ringFault = std::move(reason);
}

void PolygonCollector::unreadable(std::string_view token) {
    fault("coordinate '" + Diagnostics::printable(token) + "' " +
          (Numbers::outOfRange(token) ? "is out of range" : "does not parse"));
}

void PolygonCollector::posList(std::string_view text, int dimension) {
    if (!m_ringFault.empty())
        return;
    m_numbers.clear();
    std::string_view bad;
    if (!Numbers::parseList(text, m_numbers, &bad))
        return unreadable(bad);
    if (m_numbers.size() % static_cast<std::size_t>(dimension))
        return fault("posList of " + std::to_string(m_numbers.size()) +
                     " values is not a multiple of dimension " + std::to_string(dimension));
    addPositions(dimension);
}

void PolygonCollector::pos(std::string_view text) {
    if (!m_ringFault.empty())
        return;
    m_numbers.clear();
    std::string_view bad;
    if (!Numbers::parseList(text, m_numbers, &bad))
        return unreadable(bad);
    // A single gml:pos says its own dimension by its length.
    if (m_numbers.size() != 2 && m_numbers.size() != 3)
        return fault("pos of " + std::to_string(m_numbers.size()) + " values, not 2 or 3");
    addPositions(static_cast<int>(m_numbers.size()));
}

void PolygonCollector::coordinates(std::string_view text, char cs, char ts, char decimal) {
    if (!m_ringFault.empty())
        return;
    m_numbers.clear();
    int dimension = 0;
    std::string_view bad;
    if (!Numbers::parseCoordinates(text, cs, ts, decimal, m_numbers, dimension, &bad))
        return unreadable(bad);
    if (dimension != 2 && dimension != 3)
        return fault("coordinates tuples are not all of 2 or all of 3 values");
    addPositions(dimension);
}

void PolygonCollector::addPositions(int dimension) {
    auto step = static_cast<std::size_t>(dimension);
    for (std::size_t i = 0; i + step <= m_numbers.size(); i += step) {
        TVec3d const& p = m_ringVertices.emplace_back(m_numbers[i], m_numbers[i + 1],
                                                      dimension == 3 ? m_numbers[i + 2] : 0.0);
        // The sum is finite whenever every value is, bar overflow, which the check below allows.
        if (std::isfinite(p.x + p.y + p.z))
            continue;
        for (double v : {p.x, p.y, p.z})
            if (!std::isfinite(v))
                return fault(std::string("coordinate '") +
                             (std::isnan(v) ? "nan"
                              : v < 0       ? "-inf"
                                            : "inf") +
                             "' is not finite");
    }
}

void PolygonCollector::endRing() {
    m_inRing = false;
    if (m_ringFault.empty()) {
        if (!m_ringVertices.empty() && m_ringVertices.back() != m_ringVertices.front())
            m_ringVertices.push_back(m_ringVertices.front());
        if (m_ringVertices.size() < 4)
            m_ringFault = "fewer than four positions";
        else if (m_ringExterior && m_polygon->exterior())
            m_ringFault = "second exterior ring";
    }
    if (!m_ringFault.empty()) {
        // A bad exterior ring drops its polygon, which says why; holes of a dropped polygon are
        // not worth a message of their own.
        if (m_ringExterior && !m_polygon->exterior())
            m_exteriorFault = m_ringFault;
        else if (m_exteriorFault.empty())
            m_diagnostics.dropped("ring", m_ringDocumentId, m_ringFault, m_ringLine);
        return;
    }
    TVec3d* vertices = m_store.array<TVec3d>(m_ringVertices.size());
    std::copy(m_ringVertices.begin(), m_ringVertices.end(), vertices);
    auto* ring =
        m_store.create<LinearRing>(m_ringId, m_ringExterior, vertices, m_ringVertices.size());
    if (m_ringExterior)
        Access::setExterior(*m_polygon, ring);
    else
        Access::addInterior(*m_polygon, ring, m_store);
}

Polygon* PolygonCollector::endPolygon() {
    Polygon* polygon = m_polygon;
    m_polygon = nullptr;
    m_inRing = false;
    if (!polygon->exterior()) {
        m_diagnostics.dropped("polygon", m_polygonDocumentId,
                              m_exteriorFault.empty() ? "no exterior ring" : m_exteriorFault,
                              m_polygonLine);
        return nullptr;
    }
    if (m_tesselator) {
        std::vector<TVec3d> vertices;
        std::vector<unsigned int> sizes;
        auto add = [&](LinearRing const& r) {
            vertices.insert(vertices.end(), r.vertexData(), r.vertexData() + r.vertexCount() - 1);
            sizes.push_back(static_cast<unsigned int>(r.vertexCount() - 1));
        };
        add(*polygon->exterior());
        for (LinearRing const* r : polygon->interiors())
            add(*r);
        Access::setIndices(*polygon, m_tesselator->triangulate(vertices, sizes));
    }
    return polygon;
}

} // namespace citygml
