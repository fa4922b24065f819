// Prints what our reader finds in a file, in the same form as OracleCounts prints it for
// libcitygml, so that the two can be compared line by line.
#include "CountWalk.h"

#include <citygml/citygml.h>

#include <algorithm>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

namespace {

std::vector<std::string> ignored;

// Point aggregates hold no polygons; libcitygml does not make geometries of them.
bool countsItself(citygml::Geometry const& g) {
    return g.getType() != citygml::Geometry::GeometryType::GT_MultiPoint;
}

bool walks(citygml::Geometry const& g) {
    std::string path = g.getNodeStackPath(g.getId(), nullptr);
    std::string first = path.substr(0, path.find_first_of("[\\"));
    return std::find(ignored.begin(), ignored.end(), first) == ignored.end();
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
        counts::Counts c;
        for (auto const* root : model->getRootCityObjects())
            counts::countObject(*root, c, walks, countsItself);
        c.print(std::cout);
    } catch (std::exception const& e) {
        std::cerr << "error: " << e.what() << "\n";
        return 1;
    }
    return 0;
}
