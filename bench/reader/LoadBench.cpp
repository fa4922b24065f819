// Loads a file with our reader and prints how much it found, so the run cannot be optimised away.
#include <citygml/citygml.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>

int main(int argc, char** argv) {
    if (argc != 2 && argc != 3) {
        std::fprintf(stderr, "usage: reader_bench_load FILE [REPEAT]\n");
        return 2;
    }
    // Small files are read several times so that the run is long enough to time.
    int repeat = argc == 3 ? std::atoi(argv[2]) : 1;
    unsigned roots = 0;
    for (int i = 0; i < repeat; ++i) {
        std::ifstream in(argv[1], std::ios::binary);
        if (!in)
            return 2;
        citygml::ParserParams params;
        params.tesselate = false;
        roots += citygml::load(in, params)->getNumRootCityObjects();
    }
    std::printf("roots %u\n", roots);
    return 0;
}
