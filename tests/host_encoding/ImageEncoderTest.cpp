#include "kolt/AttributeMapBuilder.h"
#include "kolt/EncoderInfo.h"
#include "koltx/DataBackend.h"
#include "koltx/ExtensionManager.h"
#include "koltx/FileOutputCallbacks.h"
#include "koltx/KOLTUtils.h"
#include "koltx/MemoryOutputCallbacks.h"
#include "koltx/StatusException.h"
#include "koltx/Texture.h"
#include "koltx/URI.h"
#include <ScratchDir.h>
#include <TestData.h>

#include <gtest/gtest.h>
#include <png.h>

#include <cstdlib>
#include <filesystem>
#include <unistd.h>

namespace fs = std::filesystem;
using namespace koltx;

namespace {

std::wstring const PNG = L"com.morvane.kolt.codecs.PNGEncoder";
std::wstring const JPG = L"com.morvane.kolt.codecs.JPGEncoder";

struct Options {
    std::wstring name = L"out.png";
    bool flip = true;
    std::wstring existing = L"OVERWRITE";
};

KOLTUtils::AttributeMapPtr validated(std::wstring const& id, Options const& o) {
    KOLTUtils::AttributeMapBuilderPtr builder(kolt::AttributeMapBuilder::create());
    builder->setString(L"textureName", o.name.c_str());
    builder->setBool(L"textureFlipH", o.flip);
    builder->setString(L"existingFiles", o.existing.c_str());
    KOLTUtils::AttributeMapPtr given(builder->createAttributeMap());
    KOLTUtils::ObjectPtr<kolt::EncoderInfo const> info(
        ExtensionManager::instance()->createEncoderInfo(id));
    kolt::AttributeMap const* out = nullptr;
    info->createValidatedOptions(given.get(), &out, nullptr);
    return KOLTUtils::AttributeMapPtr(out);
}

// Encodes `texture` and returns the name the validator gave it.
std::wstring encode(std::wstring const& id, std::shared_ptr<Texture> const& texture,
                    kolt::Callbacks* callbacks, Options const& o = Options()) {
    auto options = validated(id, o);
    auto encoder = ExtensionManager::instance()->createEncoder(id, options.get(), callbacks);
    encoder->encode({texture});
    return options->getString(L"textureName");
}

// 2 by 2 RGB: bottom row red, green; top row blue, white.
std::shared_ptr<Texture> smallTexture() {
    return std::make_shared<Texture>(
        nullptr, 2, 2, Texture::FORMAT_RGB8,
        std::vector<uint8_t>{255, 0, 0, 0, 255, 0, 0, 0, 255, 255, 255, 255});
}

// The pixels of a PNG file, first row of the file first.
std::vector<uint8_t> decodePNG(std::string const& bytes, png_uint_32 format) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_memory(&image, bytes.data(), bytes.size()))
        return {};
    image.format = format;
    std::vector<uint8_t> pixels(PNG_IMAGE_SIZE(image));
    png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr);
    return pixels;
}

// Memory outputs on a medium that fills up after `room` bytes.
class FullMedium : public MemoryOutputCallbacks {
public:
    explicit FullMedium(size_t room) : room(room) {}
    kolt::Status write(uint64_t handle, void const* data, size_t size) override {
        if (size > room)
            return kolt::SimpleOutputCallbacks::STATUS_IO;
        room -= size;
        return MemoryOutputCallbacks::write(handle, data, size);
    }

private:
    size_t room;
};

} // namespace

TEST(ImageEncoders, ValidatorMakesALegalFileNameWithTheRightExtension) {
    auto name = [](std::wstring const& id, std::wstring const& given) {
        Options o;
        o.name = given;
        return std::wstring(validated(id, o)->getString(L"textureName"));
    };
    EXPECT_EQ(name(PNG, L"wall.png"), L"wall.png");
    EXPECT_EQ(name(PNG, L"my wall.tga"), L"my_wall.png");
    EXPECT_EQ(name(PNG, L"../up/x"), L"___up_x.png");
    EXPECT_EQ(name(PNG, L"photo.PNG"), L"photo.PNG");
    EXPECT_EQ(name(JPG, L"a.jpeg"), L"a.jpeg");
    EXPECT_EQ(name(JPG, L"a.png"), L"a.jpg");
    EXPECT_EQ(name(JPG, L"plain"), L"plain.jpg");
    EXPECT_EQ(name(PNG, L""), L"");

    Options o;
    o.existing = L"skip";
    EXPECT_STREQ(validated(PNG, o)->getString(L"existingFiles"), L"SKIP");
    o.existing = L"sometimes";
    EXPECT_STREQ(validated(PNG, o)->getString(L"existingFiles"), L"OVERWRITE");
}

TEST(ImageEncoders, FlipDecidesWhichRowComesFirst) {
    MemoryOutputCallbacks out;
    Options o;
    o.name = L"top.png";
    encode(PNG, smallTexture(), &out, o);
    o.name = L"stored.png";
    o.flip = false;
    encode(PNG, smallTexture(), &out, o);

    auto top = decodePNG(out.getText(L"top.png"), PNG_FORMAT_RGB);
    auto stored = decodePNG(out.getText(L"stored.png"), PNG_FORMAT_RGB);
    EXPECT_EQ(top, (std::vector<uint8_t>{0, 0, 255, 255, 255, 255, 255, 0, 0, 0, 255, 0}));
    EXPECT_EQ(stored, (std::vector<uint8_t>{255, 0, 0, 0, 255, 0, 0, 0, 255, 255, 255, 255}));
    EXPECT_EQ(out.find(L"top.png")->encoderId, PNG);
    EXPECT_EQ(out.find(L"top.png")->contentType, kolt::CT_TEXTURE);
}

TEST(ImageEncoders, PNGReadAndWrittenAgainKeepsEveryPixel) {
    REQUIRE_TESTDATA();
    testsupport::ScratchDir const dir("images");
    for (char const* file : {"citygml1/official_examples/ground_summer.png",
                             "citygml1/official_examples/front_back_summer.png"}) {
        fs::path const source = testsupport::testDataDir() / file;
        auto original = DataBackend::resolveTexture(nullptr, source.wstring(), nullptr, nullptr);
        ASSERT_TRUE(original && original->isValid()) << file;
        FileOutputCallbacks out(dir.path().string());
        std::wstring const name =
            encode(PNG, original, &out, Options{L"copy.png", true, L"OVERWRITE"});
        auto again =
            DataBackend::resolveTexture(nullptr, (dir.path() / name).wstring(), nullptr, nullptr);
        ASSERT_TRUE(again && again->isValid());
        EXPECT_EQ(again->getWidth(), original->getWidth());
        EXPECT_EQ(again->getFormat(), original->getFormat());
        EXPECT_TRUE(*again == *original) << file;
        fs::remove(dir.path() / name);
    }
}

TEST(ImageEncoders, JPEGStaysWithinTheUsualLoss) {
    testsupport::ScratchDir const dir("images");
    uint32_t const size = 64;
    std::vector<uint8_t> pixels;
    for (uint32_t y = 0; y < size; ++y)
        for (uint32_t x = 0; x < size; ++x) {
            pixels.push_back(uint8_t(x * 4));
            pixels.push_back(uint8_t(y * 4));
            pixels.push_back(uint8_t(128 + (x + y)));
            pixels.push_back(200); // alpha, which JPEG drops
        }
    auto texture = std::make_shared<Texture>(nullptr, size, size, Texture::FORMAT_RGBA8, pixels);
    FileOutputCallbacks out(dir.path().string());
    std::wstring const name = encode(JPG, texture, &out, Options{L"gradient", true, L"OVERWRITE"});
    EXPECT_EQ(name, L"gradient.jpg");
    auto back =
        DataBackend::resolveTexture(nullptr, (dir.path() / name).wstring(), nullptr, nullptr);
    ASSERT_TRUE(back && back->isValid());
    ASSERT_EQ(back->getFormat(), Texture::FORMAT_RGB8);
    ASSERT_EQ(back->getWidth(), size);
    double total = 0;
    int worst = 0;
    for (uint32_t y = 0; y < size; ++y)
        for (uint32_t x = 0; x < size; ++x)
            for (int c = 0; c < 3; ++c) {
                int const d =
                    std::abs(int(back->getPixel(x, y)[c]) - int(texture->getPixel(x, y)[c]));
                total += d;
                worst = std::max(worst, d);
            }
    EXPECT_LT(total / (size * size * 3), 2.0);
    EXPECT_LE(worst, 16);
    // Rows came back in place: the bottom row is dark in green, the top one bright.
    EXPECT_LT(back->getPixel(0, 0)[1], 16);
    EXPECT_GT(back->getPixel(0, size - 1)[1], 230);
}

TEST(ImageEncoders, FailuresAreReportedByStatus) {
    auto status = [](auto&& call) {
        try {
            call();
        } catch (StatusException const& e) {
            return e.getStatus();
        }
        return kolt::Status(0);
    };
    MemoryOutputCallbacks out;
    kolt::Callbacks plain;
    EXPECT_EQ(status([&] { encode(PNG, smallTexture(), nullptr); }),
              kolt::STATUS_CALLBACKS_UNUSABLE);
    EXPECT_EQ(status([&] { encode(PNG, smallTexture(), &plain); }),
              kolt::STATUS_CALLBACKS_UNUSABLE);
    EXPECT_EQ(status([&] { encode(PNG, std::make_shared<Texture>(nullptr), &out); }),
              kolt::STATUS_TEXTURE_INVALID);
    EXPECT_EQ(status([&] { encode(PNG, nullptr, &out); }), kolt::STATUS_TEXTURE_INVALID);
    EXPECT_EQ(status([&] {
                  encode(JPG, smallTexture(), &out, Options{L"", true, L"OVERWRITE"});
              }),
              kolt::STATUS_TEXTURE_NAME_MISSING);
    EXPECT_TRUE(out.getNames().empty());

    // A write that fails between open and close leaves no output behind.
    FullMedium full(10);
    EXPECT_EQ(status([&] { encode(PNG, smallTexture(), &full); }),
              kolt::SimpleOutputCallbacks::STATUS_IO);
    EXPECT_TRUE(full.getNames().empty());
    EXPECT_EQ(full.getOpenCount(), 0u);

    // SKIP leaves an existing output alone, OVERWRITE replaces it.
    encode(PNG, smallTexture(), &out, Options{L"a.png", true, L"OVERWRITE"});
    std::string const first = out.getText(L"a.png");
    encode(PNG, smallTexture(), &out, Options{L"a.png", false, L"SKIP"});
    EXPECT_EQ(out.getText(L"a.png"), first);
    encode(PNG, smallTexture(), &out, Options{L"a.png", false, L"OVERWRITE"});
    EXPECT_NE(out.getText(L"a.png"), first);
}
