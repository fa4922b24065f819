#include "koltx/DataBackend.h"
#include "kolt/Cache.h"
#include "kolt/StringUtils.h"
#include "koltx/KOLTUtils.h"
#include "koltx/URIUtils.h"

#include <ScratchDir.h>
#include <gtest/gtest.h>

#include <png.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <jpeglib.h>
#include <string>
#include <vector>

namespace fs = std::filesystem;
using koltx::DataBackend;
using koltx::Texture;

namespace {

// Writes rows top first, as image files hold them.
void writePNG(fs::path const& path, uint32_t width, uint32_t height, int colorType,
              std::vector<uint8_t> const& topFirst) {
    std::FILE* file = std::fopen(path.c_str(), "wb");
    ASSERT_NE(file, nullptr);
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_init_io(png, file);
    png_set_IHDR(png, info, width, height, 8, colorType, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png, info);
    size_t const stride = topFirst.size() / height;
    for (uint32_t row = 0; row < height; ++row)
        png_write_row(png, topFirst.data() + row * stride);
    png_write_end(png, nullptr);
    png_destroy_write_struct(&png, &info);
    std::fclose(file);
}

void writeJPEG(fs::path const& path, uint32_t width, uint32_t height, int components,
               std::vector<uint8_t> const& topFirst) {
    std::FILE* file = std::fopen(path.c_str(), "wb");
    ASSERT_NE(file, nullptr);
    jpeg_compress_struct info;
    jpeg_error_mgr error;
    info.err = jpeg_std_error(&error);
    jpeg_create_compress(&info);
    jpeg_stdio_dest(&info, file);
    info.image_width = width;
    info.image_height = height;
    info.input_components = components;
    info.in_color_space = components == 1 ? JCS_GRAYSCALE : JCS_RGB;
    jpeg_set_defaults(&info);
    jpeg_set_quality(&info, 100, TRUE);
    jpeg_start_compress(&info, TRUE);
    while (info.next_scanline < height) {
        JSAMPROW row =
            const_cast<uint8_t*>(topFirst.data()) + info.next_scanline * width * components;
        jpeg_write_scanlines(&info, &row, 1);
    }
    jpeg_finish_compress(&info);
    jpeg_destroy_compress(&info);
    std::fclose(file);
}

class DataBackendTest : public ::testing::Test {
protected:
    void SetUp() override { fs::create_directories(folder / "tex dir"); }

    std::wstring key(std::string const& name) const {
        return kolt::StringUtils::toUTF16((folder / name).string());
    }

    testsupport::ScratchDir const folder{"images"};
    koltx::KOLTUtils::ObjectPtr<kolt::Cache> cache{kolt::Cache::create()};
};

} // namespace

TEST_F(DataBackendTest, ReadsPNGOfEveryChannelLayoutBottomRowFirst) {
    struct Layout {
        char const* name;
        int colorType;
        uint32_t width, height;
        std::vector<uint8_t> topFirst;
        int32_t format;
        std::vector<uint8_t> bottomFirst;
    };
    // RGBA: top row red, green; bottom row blue, half-transparent white.
    std::vector<Layout> const layouts = {
        {"tex dir/rgba \u00E4.png",
         PNG_COLOR_TYPE_RGBA,
         2,
         2,
         {255, 0, 0, 255, 0, 255, 0, 255, 0, 0, 255, 255, 255, 255, 255, 128},
         Texture::FORMAT_RGBA8,
         {0, 0, 255, 255, 255, 255, 255, 128, 255, 0, 0, 255, 0, 255, 0, 255}},
        {"grey.png", PNG_COLOR_TYPE_GRAY, 1, 2, {10, 20}, Texture::FORMAT_GREY8, {20, 10}},
        {"ga.png", PNG_COLOR_TYPE_GRAY_ALPHA, 1, 1, {7, 9}, Texture::FORMAT_GREYA8, {7, 9}},
        {"rgb.png", PNG_COLOR_TYPE_RGB, 1, 1, {1, 2, 3}, Texture::FORMAT_RGB8, {1, 2, 3}},
    };
    for (auto const& layout : layouts) {
        writePNG(folder / layout.name, layout.width, layout.height, layout.colorType,
                 layout.topFirst);
        std::wstring warnings;
        auto const texture =
            DataBackend::resolveTexture(cache.get(), key(layout.name), nullptr, &warnings);
        ASSERT_TRUE(texture && texture->isValid()) << layout.name;
        EXPECT_TRUE(warnings.empty());
        EXPECT_EQ(texture->getFormat(), layout.format) << layout.name;
        EXPECT_EQ(texture->getWidth(), layout.width);
        EXPECT_EQ(texture->getPixels(), layout.bottomFirst) << layout.name;
        EXPECT_EQ(texture->getURI()->getBaseName(),
                  kolt::StringUtils::toUTF16(fs::path(layout.name).filename().string()));
    }
}

TEST_F(DataBackendTest, ReadsJPEGByContentWhateverTheExtension) {
    // Flat colours survive JPEG at full quality within a small error.
    std::vector<uint8_t> rgb;
    for (int row = 0; row < 8; ++row)
        for (int x = 0; x < 8; ++x)
            for (uint8_t channel :
                 {uint8_t(row < 4 ? 200 : 40), uint8_t(100), uint8_t(row < 4 ? 20 : 220)})
                rgb.push_back(channel);
    writeJPEG(folder / "photo.png", 8, 8, 3, rgb); // a JPEG behind a misleading name
    writeJPEG(folder / "grey.jpeg", 8, 8, 1, std::vector<uint8_t>(64, 90));
    std::wstring warnings;
    auto const photo =
        DataBackend::resolveTexture(cache.get(), key("photo.png"), nullptr, &warnings);
    ASSERT_TRUE(photo);
    EXPECT_EQ(photo->getFormat(), Texture::FORMAT_RGB8);
    EXPECT_EQ(photo->getHeight(), 8u);
    // The top rows of the file (red-ish) are the last rows of the texture.
    EXPECT_NEAR(photo->getPixel(0, 7)[0], 200, 6);
    EXPECT_NEAR(photo->getPixel(0, 7)[2], 20, 6);
    EXPECT_NEAR(photo->getPixel(5, 0)[0], 40, 6);
    EXPECT_NEAR(photo->getPixel(5, 0)[2], 220, 6);
    auto const grey =
        DataBackend::resolveTexture(cache.get(), key("grey.jpeg"), nullptr, &warnings);
    ASSERT_TRUE(grey);
    EXPECT_EQ(grey->getFormat(), Texture::FORMAT_GREY8);
    EXPECT_NEAR(grey->getPixel(3, 3)[0], 90, 2);
    EXPECT_TRUE(warnings.empty());
}

TEST_F(DataBackendTest, CachesByURIAndResolvesThroughTheMap) {
    writePNG(folder / "a.png", 1, 1, PNG_COLOR_TYPE_GRAY, {1});
    koltx::ResolveMap map;
    map.addEntry(L"logical/name.png", koltx::URIUtils::createFileURIFromPath(key("a.png")));
    auto const first = DataBackend::resolveTexture(cache.get(), L"logical/name.png", &map, nullptr);
    ASSERT_TRUE(first);
    EXPECT_EQ(cache->size(), 1u);
    // The same file under its plain path is the cached object, even after the file changed.
    writePNG(folder / "a.png", 1, 1, PNG_COLOR_TYPE_GRAY, {2});
    EXPECT_EQ(DataBackend::resolveTexture(cache.get(), key("a.png"), nullptr, nullptr), first);
    // Without a cache every call reads the file.
    auto const fresh = DataBackend::resolveTexture(nullptr, key("a.png"), nullptr, nullptr);
    ASSERT_TRUE(fresh);
    EXPECT_EQ(fresh->getPixels(), std::vector<uint8_t>{2});
}

TEST_F(DataBackendTest, MissingOrCorruptFilesGiveNullAndOneWarningLine) {
    std::ofstream(folder / "corrupt.png", std::ios::binary) << "\x89PNG\r\n\x1a\n garbage";
    std::ofstream(folder / "truncated.jpg", std::ios::binary) << "\xFF\xD8\xFF\xE0";
    std::ofstream(folder / "text.png") << "hello";
    std::ofstream(folder / "empty.png");
    // Nothing that is not a regular file is read, and nothing can block or stream forever.
    ASSERT_EQ(mkfifo((folder / "fifo.png").c_str(), 0600), 0);
    fs::create_symlink("/dev/zero", folder / "zero.png");
    fs::create_directory(folder / "dir.png");
    // Headers that claim huge images are refused before any pixel is allocated.
    std::FILE* file = std::fopen((folder / "huge.png").c_str(), "wb");
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_init_io(png, file);
    png_set_IHDR(png, info, 100000, 100000, 8, PNG_COLOR_TYPE_RGBA, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png, info);
    png_write_chunk(png, reinterpret_cast<png_const_bytep>("IDAT"),
                    reinterpret_cast<png_const_bytep>("\x78\x9c"), 2);
    png_destroy_write_struct(&png, &info);
    std::fclose(file);
    writeJPEG(folder / "huge.jpg", 8, 8, 1, std::vector<uint8_t>(64, 90));
    std::fstream jpeg(folder / "huge.jpg", std::ios::in | std::ios::out | std::ios::binary);
    std::string bytes((std::istreambuf_iterator<char>(jpeg)), std::istreambuf_iterator<char>());
    jpeg.seekp(static_cast<std::streamoff>(bytes.find("\xFF\xC0") + 5));
    jpeg.write("\xEA\x60\xEA\x60", 4); // 60000 x 60000
    jpeg.close();
    for (auto const& [name, reason] : std::vector<std::pair<std::string, std::wstring>>{
             {"missing.png", L"No such file"},
             {"corrupt.png", L"damaged PNG"},
             {"truncated.jpg", L"damaged JPEG"},
             {"text.png", L"not a PNG"},
             {"empty.png", L"empty"},
             {"fifo.png", L"not a regular file"},
             {"zero.png", L"not a regular file"},
             {"dir.png", L"not a regular file"},
             {"huge.png", L"PNG of unsupported size 100000x100000"},
             {"huge.jpg", L"JPEG of unsupported size 60000x60000"}}) {
        std::wstring warnings = L"earlier\n";
        EXPECT_EQ(DataBackend::resolveTexture(cache.get(), key(name), nullptr, &warnings), nullptr)
            << name;
        EXPECT_EQ(std::count(warnings.begin(), warnings.end(), L'\n'), 2) << name;
        EXPECT_EQ(warnings.rfind(L"earlier\n", 0), 0u);
        EXPECT_NE(warnings.find(key(name)), std::wstring::npos) << name;
        EXPECT_NE(warnings.find(reason), std::wstring::npos) << name;
        // Null warnings are allowed too.
        EXPECT_EQ(DataBackend::resolveTexture(cache.get(), key(name), nullptr, nullptr), nullptr);
    }
    EXPECT_EQ(cache->size(), 0u);

    std::wstring warnings;
    EXPECT_EQ(DataBackend::resolveTexture(nullptr, L"http://example.com/a.png", nullptr, &warnings),
              nullptr);
    EXPECT_EQ(warnings, L"Texture 'http://example.com/a.png' cannot be read: scheme 'http' is not "
                        L"supported.\n");
}
