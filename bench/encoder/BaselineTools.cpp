// Helpers of run_all.sh: the inputs and baselines that the tool's conversions are compared with.
//   make-obj FILE FACES            writes a textured grid of quads (rows become objects) as an OBJ
//                                  file, with FILE's .mtl and one PNG texture beside it
//   count FILE.gml                 prints the number of coordinates in the document's posLists
//   to-chars COUNT DECIMALS [OUT]  writes COUNT numbers with std::to_chars to OUT (default
//                                  /dev/null), prints seconds and MB/s
#include <png.h>

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

// A 64 x 64 RGB checkerboard, so that the conversion writes one texture image.
bool writeTexture(std::string const& path) {
    std::FILE* file = std::fopen(path.c_str(), "wb");
    if (file == nullptr)
        return false;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    if (setjmp(png_jmpbuf(png))) {
        png_destroy_write_struct(&png, &info);
        std::fclose(file);
        return false;
    }
    png_init_io(png, file);
    int const side = 64;
    png_set_IHDR(png, info, side, side, 8, PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png, info);
    std::vector<png_byte> row(side * 3);
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            png_byte const v = ((x / 8 + y / 8) % 2) != 0 ? 200 : 60;
            row[x * 3] = v;
            row[x * 3 + 1] = static_cast<png_byte>(v / 2);
            row[x * 3 + 2] = static_cast<png_byte>(255 - v);
        }
        png_write_row(png, row.data());
    }
    png_write_end(png, nullptr);
    png_destroy_write_struct(&png, &info);
    return std::fclose(file) == 0;
}

int makeObj(char const* path, long faces) {
    long const side = static_cast<long>(std::ceil(std::sqrt(static_cast<double>(faces))));
    std::string const base = std::string(path).substr(0, std::string(path).rfind('.'));
    std::string const folder =
        base.rfind('/') == std::string::npos ? std::string() : base.substr(0, base.rfind('/') + 1);
    std::string const stem = base.substr(folder.size());
    std::FILE* mtl = std::fopen((base + ".mtl").c_str(), "w");
    if (mtl == nullptr || !writeTexture(base + ".png"))
        return 1;
    std::fprintf(mtl, "newmtl grid\nKd 1 1 1\nmap_Kd %s.png\n", stem.c_str());
    std::fclose(mtl);
    std::FILE* out = std::fopen(path, "w");
    if (out == nullptr)
        return 1;
    std::fprintf(out, "mtllib %s.mtl\n", stem.c_str());
    // Vertices of a (side + 1)^2 grid on gently varying heights, in metres.
    for (long j = 0; j <= side; ++j)
        for (long i = 0; i <= side; ++i)
            std::fprintf(out, "v %.3f %.3f %.3f\n", i * 1.5, 0.25 * std::sin(i * 0.1 + j * 0.07),
                         j * 1.5);
    // One texture tile per quad.
    std::fprintf(out, "vt 0 0\nvt 1 0\nvt 1 1\nvt 0 1\n");
    long written = 0;
    for (long j = 0; j < side && written < faces; ++j) {
        std::fprintf(out, "o row_%ld\nusemtl grid\n", j);
        for (long i = 0; i < side && written < faces; ++i, ++written) {
            long const a = j * (side + 1) + i + 1;
            std::fprintf(out, "f %ld/1 %ld/2 %ld/3 %ld/4\n", a, a + 1, a + side + 2, a + side + 1);
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

int toChars(long count, int decimals, char const* path) {
    std::vector<char> buffer(1 << 16);
    std::size_t used = 0, total = 0;
    std::FILE* sink = std::fopen(path, "w");
    if (sink == nullptr)
        return 1;
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
    if ((argc == 4 || argc == 5) && std::strcmp(argv[1], "to-chars") == 0)
        return toChars(std::atol(argv[2]), std::atoi(argv[3]), argc == 5 ? argv[4] : "/dev/null");
    std::cerr << "usage: encoder_bench_tools make-obj FILE FACES | count FILE.gml | "
                 "to-chars COUNT DECIMALS [OUT]\n";
    return 2;
}
