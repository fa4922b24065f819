// The same counts as ReaderCounts, taken with Debian's libcitygml. Built as a program of its own
// because both libraries use the namespace citygml.
#include "CountWalk.h"

#include <citygml/citygml.h>
#include <citygml/citymodel.h>
#include <citygml/cityobject.h>
#include <citygml/geometry.h>
#include <citygml/linearring.h>
#include <citygml/polygon.h>

#include <fstream>
#include <iostream>

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
    counts::Counts c;
    auto all = [](citygml::Geometry const&) { return true; };
    for (auto const& root : model->getRootCityObjects())
        counts::countObject(*root, c, all, all);
    c.print(std::cout);
    return 0;
}
