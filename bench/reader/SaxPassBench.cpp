// A bare libxml2 SAX2 push pass over a file, with callbacks that only count: the floor against
// which the reader's own work is measured.
#include <libxml/parser.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <vector>

namespace {

long elements = 0;
long textBytes = 0;
long ends = 0;

void onStart(void*, xmlChar const*, xmlChar const*, xmlChar const*, int, xmlChar const**, int, int,
             xmlChar const**) {
    ++elements;
}

void onEnd(void*, xmlChar const*, xmlChar const*, xmlChar const*) {
    ++ends;
}

void onCharacters(void*, xmlChar const*, int length) {
    textBytes += length;
}

} // namespace

int passOnce(char const* path);

int main(int argc, char** argv) {
    if (argc != 2 && argc != 3) {
        std::fprintf(stderr, "usage: reader_bench_sax FILE [REPEAT]\n");
        return 2;
    }
    int repeat = argc == 3 ? std::atoi(argv[2]) : 1;
    int rc = 0;
    for (int i = 0; i < repeat && rc == 0; ++i)
        rc = passOnce(argv[1]);
    std::printf("elements %ld %ld\ntext %ld\n", elements, ends, textBytes);
    return rc;
}

int passOnce(char const* path) {
    std::ifstream in(path, std::ios::binary);
    if (!in)
        return 2;
    xmlSAXHandler sax{};
    xmlSAXVersion(&sax, 2);
    sax.startElementNs = onStart;
    sax.endElementNs = onEnd;
    sax.characters = onCharacters;
    sax.cdataBlock = onCharacters;
    sax.serror = [](void*, xmlErrorPtr) {};
    std::vector<char> buffer(256 * 1024);
    in.read(buffer.data(), 4);
    xmlParserCtxtPtr ctxt = xmlCreatePushParserCtxt(&sax, nullptr, buffer.data(),
                                                    static_cast<int>(in.gcount()), nullptr);
    xmlCtxtUseOptions(ctxt, XML_PARSE_NONET | XML_PARSE_COMPACT);
    int rc = 0;
    while (in && rc == 0) {
        in.read(buffer.data(), static_cast<std::streamsize>(buffer.size()));
        if (in.gcount() > 0)
            rc = xmlParseChunk(ctxt, buffer.data(), static_cast<int>(in.gcount()), 0);
    }
    if (rc == 0)
        rc = xmlParseChunk(ctxt, nullptr, 0, 1);
    xmlFreeParserCtxt(ctxt);
    return rc == 0 ? 0 : 1;
}
