// The same counts as ReaderCounts, taken with Debian's libcitygml. Built as a program of its own
// because both libraries use the namespace citygml.
#include <citygml/citygml.h>
#include <citygml/citymodel.h>
#include <citygml/cityobject.h>
#include <citygml/geometry.h>
#include <citygml/linearring.h>
#include <citygml/polygon.h>

#include <fstream>
#include <iostream>

namespace {

struct Counts {
    long objects = 0, geometries = 0, polygons = 0, rings = 0, vertices = 0;
};

void countGeometry(citygml::Geometry const& g, Counts& c) {
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
        countGeometry(g.getGeometry(i), c);
}

void countObject(citygml::CityObject const& o, Counts& c) {
    ++c.objects;
    for (unsigned i = 0; i < o.getChildCityObjectsCount(); ++i)
        countObject(o.getChildCityObject(i), c);
    for (unsigned i = 0; i < o.getGeometriesCount(); ++i)
        countGeometry(o.getGeometry(i), c);
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: oracle_counts FILE\n";
        return 2;
    }
    std::ifstream in(argv[1], std::ios::binary);
    if (!in) {
        std::cerr << "cannot open " << argv[1] << "\n";
        return 2;
    }
    citygml::ParserParams params;
    params.tesselate = false;
    params.keepVertices = true;
    auto model = citygml::load(in, params);
    if (!model) {
        std::cerr << "error: libcitygml returned no model\n";
        return 1;
    }
    Counts c;
    for (auto const& root : model->getRootCityObjects())
        countObject(*root, c);
    std::cout << "objects " << c.objects << "\ngeometries " << c.geometries << "\npolygons "
              << c.polygons << "\nrings " << c.rings << "\nvertices " << c.vertices << "\n";
    return 0;
}
