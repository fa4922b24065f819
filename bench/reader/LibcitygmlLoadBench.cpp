// The same load through Debian's libcitygml, tesselation off; a separate program because both
// libraries use the namespace citygml.
#include <citygml/citygml.h>
#include <citygml/citymodel.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>

int main(int argc, char** argv) {
    if (argc != 2 && argc != 3) {
        std::fprintf(stderr, "usage: libcitygml_bench_load FILE [REPEAT]\n");
        return 2;
    }
    int repeat = argc == 3 ? std::atoi(argv[2]) : 1;
    std::size_t roots = 0;
    for (int i = 0; i < repeat; ++i) {
        std::ifstream in(argv[1], std::ios::binary);
        if (!in)
            return 2;
        citygml::ParserParams params;
        params.tesselate = false;
        params.keepVertices = true;
        auto model = citygml::load(in, params);
        if (!model)
            return 1;
        roots += model->getRootCityObjects().size();
    }
    std::printf("roots %zu\n", roots);
    return 0;
}
