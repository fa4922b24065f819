// Reads a CityGML file with Debian's libcitygml and prints its polygon count and total polygon
// area (holes subtracted). A program of its own: libcitygml and our reader share the namespace
// citygml and never meet in one binary.
#include <citygml/citygml.h>
#include <citygml/citymodel.h>
#include <citygml/cityobject.h>
#include <citygml/geometry.h>
#include <citygml/linearring.h>
#include <citygml/polygon.h>

#include <cmath>
#include <cstdio>
#include <fstream>
#include <iostream>

namespace {

struct Totals {
    long polygons = 0;
    double area = 0;
};

// Half the length of the Newell normal: the area of a planar ring in any orientation.
double ringArea(std::vector<TVec3d> const& v) {
    double nx = 0, ny = 0, nz = 0;
    for (std::size_t i = 0; i < v.size(); ++i) {
        TVec3d const& a = v[i];
        TVec3d const& b = v[(i + 1) % v.size()];
        nx += (a.y - b.y) * (a.z + b.z);
        ny += (a.z - b.z) * (a.x + b.x);
        nz += (a.x - b.x) * (a.y + b.y);
    }
    return 0.5 * std::sqrt(nx * nx + ny * ny + nz * nz);
}

void addGeometry(citygml::Geometry const& g, Totals& t) {
    for (unsigned i = 0; i < g.getPolygonsCount(); ++i) {
        auto const p = g.getPolygon(i);
        if (!p->exteriorRing())
            continue;
        ++t.polygons;
        double area = ringArea(p->exteriorRing()->getVertices());
        for (auto const& ring : p->interiorRings())
            area -= ringArea(ring->getVertices());
        t.area += area;
    }
    for (unsigned i = 0; i < g.getGeometriesCount(); ++i)
        addGeometry(g.getGeometry(i), t);
}

void addObject(citygml::CityObject const& o, Totals& t) {
    for (unsigned i = 0; i < o.getGeometriesCount(); ++i)
        addGeometry(o.getGeometry(i), t);
    for (unsigned i = 0; i < o.getChildCityObjectsCount(); ++i)
        addObject(o.getChildCityObject(i), t);
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: encoder_area_oracle FILE\n";
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
    try {
        auto const model = citygml::load(in, params);
        if (!model) {
            std::cerr << "libcitygml returned no model\n";
            return 1;
        }
        Totals totals;
        for (auto const* object : model->getRootCityObjects())
            addObject(*object, totals);
        std::printf("%ld %.17g\n", totals.polygons, totals.area);
    } catch (std::exception const& e) {
        std::cerr << "libcitygml failed: " << e.what() << "\n";
        return 1;
    }
    return 0;
}
