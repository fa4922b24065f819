// The walk both count printers make: ReaderCounts over our reader, OracleCounts over Debian's
// libcitygml. Each program compiles it against its own library, since the two share the
// namespace citygml and never meet in one binary.
#pragma once

#include <ostream>

namespace counts {

struct Counts {
    long objects = 0, geometries = 0, polygons = 0, rings = 0, vertices = 0;

    void print(std::ostream& out) const {
        out << "objects " << objects << "\ngeometries " << geometries << "\npolygons " << polygons
            << "\nrings " << rings << "\nvertices " << vertices << "\n";
    }
};

// `countsItself(g)`: whether the geometry counts as one (its polygons and children always do).
template <class Geometry, class CountsItself>
void countGeometry(Geometry const& g, Counts& c, CountsItself const& countsItself) {
    if (countsItself(g))
        ++c.geometries;
    for (unsigned i = 0; i < g.getPolygonsCount(); ++i) {
        auto p = g.getPolygon(i);
        ++c.polygons;
        ++c.rings;
        c.vertices += static_cast<long>(p->exteriorRing()->getVertices().size());
        for (auto const& r : p->interiorRings()) {
            ++c.rings;
            c.vertices += static_cast<long>(r->getVertices().size());
        }
    }
    for (unsigned i = 0; i < g.getGeometriesCount(); ++i)
        countGeometry(g.getGeometry(i), c, countsItself);
}

// `walks(g)`: whether a geometry held directly by an object is counted at all.
template <class CityObject, class Walks, class CountsItself>
void countObject(CityObject const& o, Counts& c, Walks const& walks,
                 CountsItself const& countsItself) {
    ++c.objects;
    for (unsigned i = 0; i < o.getChildCityObjectsCount(); ++i)
        countObject(o.getChildCityObject(i), c, walks, countsItself);
    for (unsigned i = 0; i < o.getGeometriesCount(); ++i)
        if (walks(o.getGeometry(i)))
            countGeometry(o.getGeometry(i), c, countsItself);
}

} // namespace counts
