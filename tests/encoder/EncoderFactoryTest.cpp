#include "EncoderTestSupport.h"

#include <encoder/CityGMLEncoderFactory.h>

#include <kolt/EncoderInfo.h>

#include <Describe.h>
#include <Golden.h>
#include <gtest/gtest.h>
#include <png.h>

#include <cmath>
#include <cstring>
#include <sstream>
#include <string>
#include <vector>

namespace {

std::vector<unsigned char> decodeBase64(std::string const& text) {
    std::string const abc = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::vector<unsigned char> out;
    unsigned value = 0;
    int bits = 0;
    for (char c : text) {
        if (c == '=')
            break;
        auto const pos = abc.find(c);
        if (pos == std::string::npos)
            throw std::runtime_error("not Base64");
        value = (value << 6) | static_cast<unsigned>(pos);
        bits += 6;
        if (bits >= 8) {
            bits -= 8;
            out.push_back(static_cast<unsigned char>((value >> bits) & 0xFF));
        }
    }
    return out;
}

} // namespace

TEST(EncoderFactory, DescribesTheEncoderItsDefaultsAndAnnotations) {
    auto& factory = enctest::factory();
    kolt::EncoderInfo const* info = factory.getEncoderInfo();
    std::string const text =
        kolt::StringUtils::toUTF8(factory.getName() + L": " + factory.getDescription()) + "\n" +
        testsupport::describeEncoderInfo(*info);
    EXPECT_TRUE(testsupport::matchesGolden("encoder/encoder_info.txt", text));
    EXPECT_EQ(kolt::CT_GEOMETRY, factory.getContentType());
    EXPECT_EQ(koltx::Extension::ET_ENCODER, factory.getExtensionType());
    EXPECT_EQ(nullptr, info->findAnnotation(L"globalOffset"));
    EXPECT_TRUE(factory.canHandleURI(L"/tmp/city.gml"));
    std::unique_ptr<koltx::Encoder> encoder(factory.create(nullptr, nullptr));
    EXPECT_EQ(L"com.morvane.kolt.codecs.CityGMLEncoder", encoder->getID());
    EXPECT_EQ(kolt::CT_GEOMETRY, encoder->getContentType());
}

TEST(EncoderFactory, IconIsA64By64PngOfFixedSize) {
    std::string const icon = enctest::factory().getEncoderInfo()->getIcon();
    ASSERT_EQ(6516u, icon.size());
    auto const png = decodeBase64(icon);
    ASSERT_EQ(4885u, png.size());

    png_image image;
    std::memset(&image, 0, sizeof image);
    image.version = PNG_IMAGE_VERSION;
    ASSERT_TRUE(png_image_begin_read_from_memory(&image, png.data(), png.size()));
    EXPECT_EQ(64u, image.width);
    EXPECT_EQ(64u, image.height);
    image.format = PNG_FORMAT_RGBA;
    std::vector<unsigned char> pixels(PNG_IMAGE_SIZE(image));
    ASSERT_TRUE(png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr));
    // A drawing, not a blank: the centre is opaque and the corners are transparent.
    EXPECT_EQ(255, pixels[(32 * 64 + 32) * 4 + 3]);
    EXPECT_EQ(0, pixels[3]);
}

TEST(EncoderFactory, ValidatorCorrectsPrecisionOffsetAndBaseName) {
    auto precisionOf = [](double given) {
        return enctest::validatedOptions(
                   [&](kolt::AttributeMapBuilder& b) { b.setFloat(L"vertexPrecision", given); })
            ->getFloat(L"vertexPrecision");
    };
    EXPECT_EQ(1.0, precisionOf(5));
    EXPECT_EQ(0.0000000001, precisionOf(0));
    EXPECT_EQ(0.01, precisionOf(0.01));
    // The validator would keep a NaN; the host refuses it before.
    EXPECT_THROW(precisionOf(std::nan("")), std::runtime_error);

    auto offsetOf = [](std::vector<double> const& given) {
        auto const options = enctest::validatedOptions([&](kolt::AttributeMapBuilder& b) {
            b.setFloatArray(L"globalOffset", given.data(), given.size());
        });
        size_t count = 0;
        double const* values = options->getFloatArray(L"globalOffset", &count);
        return std::vector<double>(values, values + count);
    };
    EXPECT_EQ((std::vector<double>{7, 0, 0}), offsetOf({7}));
    EXPECT_EQ((std::vector<double>{1, 2, 3}), offsetOf({1, 2, 3, 4}));
    EXPECT_EQ((std::vector<double>{0, 0, 0}), offsetOf({}));

    auto const options = enctest::validatedOptions([](kolt::AttributeMapBuilder& b) {
        b.setString(L"baseName", L"my city/model");
        b.setString(L"srsName", L"EPSG:25832 & <x>");
        b.setInt(L"LOD", -3);
    });
    EXPECT_STREQ(L"my_city_model", options->getString(L"baseName"));
    // Passed through as they are; the encoder deals with them.
    EXPECT_STREQ(L"EPSG:25832 & <x>", options->getString(L"srsName"));
    EXPECT_EQ(-3, options->getInt(L"LOD"));
}
