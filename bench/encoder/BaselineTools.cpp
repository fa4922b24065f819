// Helpers of encode_bench.sh: the baselines that the tool's conversions are compared with.
//   make-obj FILE FACES       writes a grid of quads (rows become objects) as an OBJ file
//   count FILE.gml            prints the number of coordinates in the document's posLists
//   to-chars COUNT DECIMALS   writes COUNT numbers with std::to_chars, prints seconds and MB/s
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

namespace {

int makeObj(char const* path, long faces) {
    long const side = static_cast<long>(std::ceil(std::sqrt(static_cast<double>(faces))));
    std::FILE* out = std::fopen(path, "w");
    if (out == nullptr)
        return 1;
    // Vertices of a (side + 1)^2 grid on gently varying heights, in metres.
    for (long j = 0; j <= side; ++j)
        for (long i = 0; i <= side; ++i)
            std::fprintf(out, "v %.3f %.3f %.3f\n", i * 1.5, 0.25 * std::sin(i * 0.1 + j * 0.07),
                         j * 1.5);
    long written = 0;
    for (long j = 0; j < side && written < faces; ++j) {
        std::fprintf(out, "o row_%ld\n", j);
        for (long i = 0; i < side && written < faces; ++i, ++written) {
            long const a = j * (side + 1) + i + 1;
            std::fprintf(out, "f %ld %ld %ld %ld\n", a, a + 1, a + side + 2, a + side + 1);
        }
    }
    std::fclose(out);
    return 0;
}

int countCoordinates(char const* path) {
    std::ifstream in(path, std::ios::binary);
    std::string line;
    long count = 0;
    bool inList = false;
    while (std::getline(in, line)) {
        auto const open = line.find("<gml:posList");
        if (open != std::string::npos) {
            inList = true;
            line = line.substr(line.find('>', open) + 1);
        }
        if (!inList)
            continue;
        auto const close = line.find("</gml:posList>");
        std::string const part = close == std::string::npos ? line : line.substr(0, close);
        bool inNumber = false;
        for (char c : part) {
            bool const digit = c != ' ' && c != '\t' && c != '\r';
            if (digit && !inNumber)
                ++count;
            inNumber = digit;
        }
        if (close != std::string::npos)
            inList = false;
    }
    std::printf("%ld\n", count);
    return 0;
}

int toChars(long count, int decimals) {
    std::vector<char> buffer(1 << 16);
    std::size_t used = 0, total = 0;
    std::FILE* sink = std::fopen("/dev/null", "w");
    auto const start = std::chrono::steady_clock::now();
    for (long i = 0; i < count; ++i) {
        double const value = 458000.0 + static_cast<double>(i % 100000) * 0.0137;
        if (buffer.size() - used < 64) {
            std::fwrite(buffer.data(), 1, used, sink);
            total += used;
            used = 0;
        }
        auto const result = std::to_chars(buffer.data() + used, buffer.data() + buffer.size(),
                                          value, std::chars_format::fixed, decimals);
        used = static_cast<std::size_t>(result.ptr - buffer.data());
        buffer[used++] = ' ';
    }
    std::fwrite(buffer.data(), 1, used, sink);
    total += used;
    std::fclose(sink);
    double const seconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    std::printf("%.3f %.1f\n", seconds, static_cast<double>(total) / 1048576.0 / seconds);
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    if (argc == 4 && std::strcmp(argv[1], "make-obj") == 0)
        return makeObj(argv[2], std::atol(argv[3]));
    if (argc == 3 && std::strcmp(argv[1], "count") == 0)
        return countCoordinates(argv[2]);
    if (argc == 4 && std::strcmp(argv[1], "to-chars") == 0)
        return toChars(std::atol(argv[2]), std::atoi(argv[3]));
    std::cerr << "usage: encoder_bench_tools make-obj FILE FACES | count FILE.gml | "
                 "to-chars COUNT DECIMALS\n";
    return 2;
}
