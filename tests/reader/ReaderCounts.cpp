// Prints what our reader finds in a file, in the same form as OracleCounts prints it for
// libcitygml, so that the two can be compared line by line.
#include <citygml/citygml.h>

#include <algorithm>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

namespace {

struct Counts {
    long objects = 0, geometries = 0, polygons = 0, rings = 0, vertices = 0;
};

std::vector<std::string> ignored;

bool isPointAggregate(citygml::Geometry const& g) {
    return g.getType() == citygml::Geometry::GeometryType::GT_MultiPoint;
}

void countGeometry(citygml::Geometry const& g, Counts& c) {
    // Point aggregates hold no polygons; libcitygml does not make geometries of them.
    if (!isPointAggregate(g))
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
    for (unsigned i = 0; i < o.getGeometriesCount(); ++i) {
        std::string path = o.getGeometry(i).getNodeStackPath(o.getGeometry(i).getId(), nullptr);
        std::string first = path.substr(0, path.find_first_of("[\\"));
        if (std::find(ignored.begin(), ignored.end(), first) == ignored.end())
            countGeometry(o.getGeometry(i), c);
    }
}

} // namespace

int main(int argc, char** argv) {
    // --ignore TAG leaves out geometries held by that feature property, e.g. bldg:lod0roofedge.
    int arg = 1;
    while (arg + 1 < argc && std::string(argv[arg]) == "--ignore") {
        ignored.push_back(argv[arg + 1]);
        arg += 2;
    }
    if (arg + 1 != argc) {
        std::cerr << "usage: reader_counts [--ignore TAG]... FILE\n";
        return 2;
    }
    std::ifstream in(argv[arg], std::ios::binary);
    if (!in) {
        std::cerr << "cannot open " << argv[arg] << "\n";
        return 2;
    }
    try {
        citygml::ParserParams params;
        params.tesselate = false;
        auto model = citygml::load(in, params);
        Counts c;
        for (auto const* root : model->getRootCityObjects())
            countObject(*root, c);
        std::cout << "objects " << c.objects << "\ngeometries " << c.geometries << "\npolygons "
                  << c.polygons << "\nrings " << c.rings << "\nvertices " << c.vertices << "\n";
    } catch (std::exception const& e) {
        std::cerr << "error: " << e.what() << "\n";
        return 1;
    }
    return 0;
}
