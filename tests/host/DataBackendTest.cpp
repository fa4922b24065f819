#include "koltx/DataBackend.h"
#include "kolt/Cache.h"
#include "kolt/StringUtils.h"
#include "koltx/KOLTUtils.h"

#include <ScratchDir.h>
#include <TestData.h>
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

namespace fs = std::filesystem;
using koltx::DataBackend;
using koltx::Texture;

namespace {

class DataBackendTest : public ::testing::Test {
protected:
    // The images of tests/data/host, and the RGBA one under a name with a blank and an umlaut.
    void SetUp() override {
        fs::copy(testsupport::dataFile("host"), folder.path());
        fs::create_directories(folder / "tex dir");
        fs::copy_file(folder / "rgba.png", folder / "tex dir/rgba \u00E4.png");
    }

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
        int32_t format;
        uint32_t width;
        std::vector<uint8_t> bottomFirst;
    };
    // RGBA: top row red, green; bottom row blue, half-transparent white.
    std::vector<Layout> const layouts = {
        {"tex dir/rgba \u00E4.png",
         Texture::FORMAT_RGBA8,
         2,
         {0, 0, 255, 255, 255, 255, 255, 128, 255, 0, 0, 255, 0, 255, 0, 255}},
        {"grey.png", Texture::FORMAT_GREY8, 1, {20, 10}},
        {"ga.png", Texture::FORMAT_GREYA8, 1, {7, 9}},
        {"rgb.png", Texture::FORMAT_RGB8, 1, {1, 2, 3}},
    };
    for (auto const& layout : layouts) {
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

TEST_F(DataBackendTest, MissingOrCorruptFilesGiveNullAndOneWarningLine) {
    // Nothing that is not a regular file is read, and nothing can block or stream forever.
    ASSERT_EQ(mkfifo((folder / "fifo.png").c_str(), 0600), 0);
    fs::create_symlink("/dev/zero", folder / "zero.png");
    fs::create_directory(folder / "dir.png");
    // huge.png and huge.jpg claim images too large to allocate.
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
