// Loads a file with our reader and prints how much it found, so the run cannot be optimised away.
#include <citygml/citygml.h>

#include <cstdio>
#include <fstream>

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: reader_bench_load FILE\n");
        return 2;
    }
    std::ifstream in(argv[1], std::ios::binary);
    if (!in)
        return 2;
    citygml::ParserParams params;
    params.tesselate = false;
    auto model = citygml::load(in, params);
    std::printf("roots %u\n", model->getNumRootCityObjects());
    return 0;
}
