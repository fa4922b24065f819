// Loads a CityGML file with the parameters the decoder uses and nothing else, so that a
// whole-process timing of it is the baseline of `gmlcodec info` on the same file.
#include <citygml/citygml.h>

#include <fstream>
#include <iostream>

namespace {

void count(citygml::Geometry const& g, std::size_t& geometries, std::size_t& polygons) {
    if (g.getPolygonsCount() > 0)
        ++geometries;
    polygons += g.getPolygonsCount();
    for (unsigned i = 0; i < g.getGeometriesCount(); ++i)
        count(g.getGeometry(i), geometries, polygons);
}

void count(citygml::CityObject const& o, std::size_t& geometries, std::size_t& polygons) {
    for (unsigned i = 0; i < o.getChildCityObjectsCount(); ++i)
        count(o.getChildCityObject(i), geometries, polygons);
    for (unsigned i = 0; i < o.getGeometriesCount(); ++i)
        count(o.getGeometry(i), geometries, polygons);
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: bench_reader_load FILE.gml\n";
        return 2;
    }
    std::ifstream stream(argv[1], std::ios::binary);
    if (!stream) {
        std::cerr << "cannot open " << argv[1] << "\n";
        return 1;
    }
    try {
        citygml::ParserParams params;
        params.tesselate = false;
        auto const model = citygml::load(stream, params);
        std::size_t geometries = 0;
        std::size_t polygons = 0;
        for (auto const* root : model->getRootCityObjects())
            count(*root, geometries, polygons);
        std::cout << "geometries with polygons: " << geometries << ", polygons: " << polygons
                  << "\n";
    } catch (std::exception const& e) {
        std::cerr << e.what() << "\n";
        return 1;
    }
    return 0;
}
