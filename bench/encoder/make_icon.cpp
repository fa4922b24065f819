// Draws the encoder's 64x64 icon (a stylised building against the sky) and prints it as Base64.
// The PNG is padded with a comment chunk to the fixed size the host expects of an icon.
#include <png.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

constexpr int kSize = 64;
constexpr std::size_t kTargetBytes = 4885;

struct Rgba {
    std::uint8_t r, g, b, a;
};

using Image = std::vector<Rgba>;

void fillRect(Image& img, int x0, int y0, int x1, int y1, Rgba c) {
    for (int y = y0; y < y1; ++y)
        for (int x = x0; x < x1; ++x)
            img[static_cast<std::size_t>(y * kSize + x)] = c;
}

// Small deterministic noise so the drawing has some texture (and a realistic size).
std::uint8_t jitter(std::uint8_t v, std::uint32_t& seed, int amount) {
    seed = seed * 1664525u + 1013904223u;
    int d = static_cast<int>((seed >> 24) % static_cast<std::uint32_t>(2 * amount + 1)) - amount;
    int out = static_cast<int>(v) + d;
    return static_cast<std::uint8_t>(out < 0 ? 0 : (out > 255 ? 255 : out));
}

Image draw() {
    Image img(kSize * kSize, Rgba{0, 0, 0, 0});
    std::uint32_t seed = 7;
    // Sky disc.
    for (int y = 0; y < kSize; ++y) {
        for (int x = 0; x < kSize; ++x) {
            double dx = x - 31.5, dy = y - 31.5;
            if (std::sqrt(dx * dx + dy * dy) <= 31.0) {
                auto t = static_cast<double>(y) / kSize;
                img[static_cast<std::size_t>(y * kSize + x)] =
                    Rgba{static_cast<std::uint8_t>(90 + 80 * t),
                         static_cast<std::uint8_t>(150 + 60 * t), 230, 255};
            }
        }
    }
    // Ground.
    for (int y = 50; y < kSize; ++y)
        for (int x = 0; x < kSize; ++x) {
            auto& p = img[static_cast<std::size_t>(y * kSize + x)];
            if (p.a != 0)
                p = Rgba{jitter(70, seed, 12), jitter(140, seed, 12), jitter(60, seed, 12), 255};
        }
    // Tall building: lit front and shaded side.
    fillRect(img, 14, 12, 34, 52, Rgba{205, 200, 190, 255});
    fillRect(img, 34, 16, 42, 52, Rgba{150, 145, 138, 255});
    // Low building with a pitched roof.
    fillRect(img, 42, 32, 54, 52, Rgba{190, 120, 90, 255});
    for (int y = 24; y < 32; ++y) {
        int half = (y - 24) * 6 / 8 + 1;
        fillRect(img, 48 - half, y, 48 + half, y + 1, Rgba{150, 40, 35, 255});
    }
    // Facade texture and windows.
    for (int y = 12; y < 52; ++y)
        for (int x = 14; x < 42; ++x) {
            auto& p = img[static_cast<std::size_t>(y * kSize + x)];
            p.r = jitter(p.r, seed, 6);
            p.g = jitter(p.g, seed, 6);
            p.b = jitter(p.b, seed, 6);
        }
    for (int row = 0; row < 8; ++row)
        for (int col = 0; col < 4; ++col) {
            bool lit = ((row * 7 + col * 3) % 5) == 0;
            Rgba c = lit ? Rgba{250, 220, 110, 255} : Rgba{60, 90, 130, 255};
            fillRect(img, 16 + col * 5, 15 + row * 5, 19 + col * 5, 18 + row * 5, c);
        }
    fillRect(img, 46, 42, 50, 52, Rgba{90, 60, 40, 255});
    return img;
}

void appendBytes(png_structp png, png_bytep data, png_size_t length) {
    auto* out = static_cast<std::vector<std::uint8_t>*>(png_get_io_ptr(png));
    out->insert(out->end(), data, data + length);
}

std::vector<std::uint8_t> encode(Image const& img, std::string const& comment) {
    std::vector<std::uint8_t> out;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    if (!png || !info || setjmp(png_jmpbuf(png))) {
        std::fprintf(stderr, "libpng failed\n");
        std::exit(1);
    }
    png_set_write_fn(png, &out, appendBytes, nullptr);
    png_set_compression_level(png, 9);
    png_set_IHDR(png, info, kSize, kSize, 8, PNG_COLOR_TYPE_RGBA, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_text text{};
    std::string key = "Comment";
    if (!comment.empty()) {
        text.compression = PNG_TEXT_COMPRESSION_NONE;
        text.key = key.data();
        text.text = const_cast<char*>(comment.c_str());
        text.text_length = comment.size();
        png_set_text(png, info, &text, 1);
    }
    png_write_info(png, info);
    for (int y = 0; y < kSize; ++y) {
        auto* row = reinterpret_cast<png_bytep>(
            const_cast<Rgba*>(img.data() + static_cast<std::size_t>(y * kSize)));
        png_write_row(png, row);
    }
    png_write_end(png, info);
    png_destroy_write_struct(&png, &info);
    return out;
}

std::string base64(std::vector<std::uint8_t> const& in) {
    static char const* abc = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string out;
    for (std::size_t i = 0; i < in.size(); i += 3) {
        std::uint32_t v = static_cast<std::uint32_t>(in[i]) << 16;
        if (i + 1 < in.size())
            v |= static_cast<std::uint32_t>(in[i + 1]) << 8;
        if (i + 2 < in.size())
            v |= in[i + 2];
        out += abc[(v >> 18) & 63];
        out += abc[(v >> 12) & 63];
        out += i + 1 < in.size() ? abc[(v >> 6) & 63] : '=';
        out += i + 2 < in.size() ? abc[v & 63] : '=';
    }
    return out;
}

} // namespace

int main(int argc, char** argv) {
    Image img = draw();
    std::size_t bare = encode(img, "").size();
    // A tEXt chunk costs 12 bytes of framing plus the key, its NUL and the text.
    std::size_t frame = 12 + 7 + 1;
    if (bare + frame + 1 > kTargetBytes) {
        std::fprintf(stderr, "drawing too large: %zu bytes\n", bare);
        return 1;
    }
    std::string pad = "kolt CityGML encoder icon. ";
    std::string comment;
    while (comment.size() < kTargetBytes - bare - frame)
        comment += pad;
    comment.resize(kTargetBytes - bare - frame);
    std::vector<std::uint8_t> png = encode(img, comment);
    if (png.size() != kTargetBytes) {
        std::fprintf(stderr, "unexpected size %zu\n", png.size());
        return 1;
    }
    if (argc > 1) {
        FILE* f = std::fopen(argv[1], "wb");
        if (!f)
            return 1;
        std::fwrite(png.data(), 1, png.size(), f);
        std::fclose(f);
    }
    std::fprintf(stderr, "drawing %zu bytes, padded to %zu\n", bare, png.size());
    std::printf("%s\n", base64(png).c_str());
    return 0;
}
