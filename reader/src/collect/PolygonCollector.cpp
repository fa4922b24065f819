#include "PolygonCollector.h"

#include "../Access.h"
#include "../Numbers.h"

#include <algorithm>

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

void PolygonCollector::posList(std::string_view text, int dimension) {
    if (!m_ringFault.empty())
        return;
    m_numbers.clear();
    if (!Numbers::parseList(text, m_numbers))
        return fault("unreadable coordinates");
    addPositions(dimension);
}

void PolygonCollector::pos(std::string_view text) {
    if (!m_ringFault.empty())
        return;
    m_numbers.clear();
    if (!Numbers::parseList(text, m_numbers))
        return fault("unreadable coordinates");
    // A single gml:pos says its own dimension by its length.
    addPositions(static_cast<int>(m_numbers.size()));
}

void PolygonCollector::coordinates(std::string_view text, char cs, char ts, char decimal) {
    if (!m_ringFault.empty())
        return;
    m_numbers.clear();
    int dimension = 0;
    if (!Numbers::parseCoordinates(text, cs, ts, decimal, m_numbers, dimension) ||
        (dimension != 2 && dimension != 3))
        return fault("unreadable coordinates");
    addPositions(dimension);
}

void PolygonCollector::addPositions(int dimension) {
    if ((dimension != 2 && dimension != 3) ||
        m_numbers.size() % static_cast<std::size_t>(dimension))
        return fault("unreadable coordinates");
    for (std::size_t i = 0; i < m_numbers.size(); i += static_cast<std::size_t>(dimension))
        m_ringVertices.emplace_back(m_numbers[i], m_numbers[i + 1],
                                    dimension == 3 ? m_numbers[i + 2] : 0.0);
}

void PolygonCollector::endRing() {
    m_inRing = false;
    if (!m_ringFault.empty()) {
        m_diagnostics.warn("ring '" + std::string(m_ringId) +
                               "' has unreadable coordinates and is dropped",
                           m_ringLine);
        return;
    }
    if (!m_ringVertices.empty() && m_ringVertices.back() != m_ringVertices.front())
        m_ringVertices.push_back(m_ringVertices.front());
    if (m_ringVertices.size() < 4) {
        m_diagnostics.warn("ring '" + std::string(m_ringId) +
                               "' has fewer than 4 positions and is dropped",
                           m_ringLine);
        return;
    }
    if (m_ringExterior && m_polygon->exterior()) {
        m_diagnostics.warn("polygon '" + std::string(m_polygon->getId()) +
                               "' has a second exterior ring; it is ignored",
                           m_ringLine);
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
        m_diagnostics.warn("polygon '" + std::string(polygon->getId()) +
                               "' has no usable exterior ring and is dropped",
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
