// The same load through Debian's libcitygml, tesselation off; a separate program because both
// libraries use the namespace citygml.
#include <citygml/citygml.h>
#include <citygml/citymodel.h>

#include <cstdio>
#include <fstream>

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: libcitygml_bench_load FILE\n");
        return 2;
    }
    std::ifstream in(argv[1], std::ios::binary);
    if (!in)
        return 2;
    citygml::ParserParams params;
    params.tesselate = false;
    params.keepVertices = true;
    auto model = citygml::load(in, params);
    if (!model)
        return 1;
    std::printf("roots %zu\n", model->getRootCityObjects().size());
    return 0;
}
