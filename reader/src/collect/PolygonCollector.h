#pragma once

#include "../Diagnostics.h"
#include "../ObjectArena.h"

#include <citygml/Polygon.h>
#include <citygml/TVec3.h>
#include <citygml/TesselatorBase.h>

#include <string>
#include <string_view>
#include <vector>

namespace citygml {

// Reads one polygon at a time with its rings. A bad ring is dropped, and with an exterior ring
// the polygon; each drop is told to the logger.
class PolygonCollector {
public:
    // `tesselator` is null when the load asks for no triangles.
    PolygonCollector(ObjectArena& store, Diagnostics const& diagnostics,
                     TesselatorBase* tesselator);

    bool inPolygon() const { return m_polygon != nullptr; }
    bool inRing() const { return m_inRing; }

    // `id` is the polygon's id in the model; `documentId` its gml:id, empty when it has none.
    void startPolygon(std::string_view id, std::string_view documentId, int line);
    // The finished polygon, or null when it was dropped.
    Polygon* endPolygon();

    void startRing(bool exterior, std::string_view id, std::string_view documentId, int line);
    void endRing();
    // Position text inside the ring: a gml:posList of `dimension`-tuples, one gml:pos, or
    // gml:coordinates with its own separators.
    void posList(std::string_view text, int dimension);
    void pos(std::string_view text);
    void coordinates(std::string_view text, char cs, char ts, char decimal);

private:
    void addPositions(int dimension);
    // The ring is dropped at its end, for the first reason found.
    void fault(std::string reason);
    void unreadable(std::string_view token);

    ObjectArena& m_store;
    Diagnostics const& m_diagnostics;
    TesselatorBase* m_tesselator;

    Polygon* m_polygon = nullptr;
    std::string_view m_polygonDocumentId;
    int m_polygonLine = 0;
    std::string m_exteriorFault;

    bool m_inRing = false;
    bool m_ringExterior = false;
    std::string_view m_ringId;
    std::string_view m_ringDocumentId;
    int m_ringLine = 0;
    std::string m_ringFault; // empty while the ring is good
    std::vector<TVec3d> m_ringVertices;
    std::vector<double> m_numbers;
};

} // namespace citygml
