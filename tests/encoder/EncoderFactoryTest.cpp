#include "EncoderRun.h"

#include <encoder/CityGMLEncoderFactory.h>

#include <kolt/EncoderInfo.h>

#include <gtest/gtest.h>
#include <png.h>

#include <cmath>
#include <cstring>
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

TEST(EncoderFactory, DescribesTheEncoder) {
    auto& factory = enctest::factory();
    EXPECT_EQ(L"com.morvane.kolt.codecs.CityGMLEncoder", factory.getID());
    EXPECT_EQ(L"CityGML", factory.getName());
    EXPECT_EQ(L"Encodes geometry into the CityGML format", factory.getDescription());
    EXPECT_EQ(kolt::CT_GEOMETRY, factory.getContentType());
    EXPECT_EQ(koltx::Extension::ET_ENCODER, factory.getExtensionType());
    EXPECT_TRUE(factory.canHandleURI(L"/tmp/city.gml"));
    kolt::EncoderInfo const* info = factory.getEncoderInfo();
    EXPECT_STREQ(L".gml;", info->getExtensions());
    EXPECT_EQ(1, info->getType());

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

TEST(EncoderFactory, DefaultOptionsInOrderWithTheirTypes) {
    kolt::AttributeMap const* defaults = enctest::factory().getEncoderInfo()->getDefaultOptions();
    ASSERT_NE(nullptr, defaults);
    EXPECT_EQ(7u, defaults->getKeyCount());
    EXPECT_STREQ(L"gml_default_name", defaults->getString(L"baseName"));
    EXPECT_EQ(4, defaults->getInt(L"LOD"));
    EXPECT_TRUE(defaults->getBool(L"errorFallback"));
    EXPECT_TRUE(defaults->getBool(L"mergeVertices"));
    EXPECT_DOUBLE_EQ(0.001, defaults->getFloat(L"vertexPrecision"));
    EXPECT_STREQ(L"", defaults->getString(L"srsName"));
    size_t count = 0;
    double const* offset = defaults->getFloatArray(L"globalOffset", &count);
    ASSERT_EQ(3u, count);
    EXPECT_EQ(0.0, offset[0] + offset[1] + offset[2]);
}

TEST(EncoderFactory, AnnotatesTheOptions) {
    kolt::EncoderInfo const* info = enctest::factory().getEncoderInfo();
    ASSERT_EQ(6u, info->getAnnotationCount());
    wchar_t const* order[] = {L"baseName", L"LOD",           L"errorFallback",
                              L"srsName",  L"mergeVertices", L"vertexPrecision"};
    for (size_t i = 0; i < 6; ++i)
        EXPECT_STREQ(order[i], info->getAnnotation(i)->key);
    EXPECT_EQ(nullptr, info->findAnnotation(L"globalOffset"));

    auto const* baseName = info->findAnnotation(L"baseName");
    EXPECT_STREQ(L"Base Name", baseName->label);
    EXPECT_EQ(0.0, baseName->order);
    EXPECT_STREQ(L"General Settings", baseName->group);
    EXPECT_EQ(0.0, baseName->groupOrder);
    EXPECT_STREQ(L"Sets the base name of the written CityGML file.", baseName->description);
    EXPECT_FALSE(baseName->hidden);

    auto const* lod = info->findAnnotation(L"LOD");
    EXPECT_STREQ(L"Level of Detail", lod->label);
    EXPECT_EQ(1.0, lod->order);
    EXPECT_STREQ(L"Sets the level of detail of exported geometry in the written CityGML file.",
                 lod->description);

    auto const* fallback = info->findAnnotation(L"errorFallback");
    EXPECT_TRUE(fallback->hidden);
    EXPECT_EQ(nullptr, fallback->label);
    EXPECT_EQ(nullptr, fallback->description);
    EXPECT_FALSE(fallback->hasOrder);

    auto const* srs = info->findAnnotation(L"srsName");
    EXPECT_STREQ(L"Spatial Reference System Name", srs->label);
    EXPECT_EQ(2.0, srs->order);
    EXPECT_TRUE(srs->hidden);
    EXPECT_STREQ(L"Sets the name of the Spatial Reference System referenced in Envelope tags. "
                 L"This string must be correctly escaped for XML.",
                 srs->description);

    auto const* merge = info->findAnnotation(L"mergeVertices");
    EXPECT_STREQ(L"Merge Vertices Within Precision", merge->label);
    EXPECT_EQ(9040.0, merge->order);
    EXPECT_STREQ(L"Geometry", merge->group);
    EXPECT_EQ(1.0, merge->groupOrder);
    EXPECT_STREQ(
        L"Finds co-incidental vertices (using the precision distance) and shares their index.",
        merge->description);

    auto const* precision = info->findAnnotation(L"vertexPrecision");
    EXPECT_STREQ(L"Vertex Precision", precision->label);
    EXPECT_EQ(9010.0, precision->order);
    EXPECT_STREQ(L"Specifies the minimal distance between vertices.", precision->description);
    ASSERT_TRUE(precision->hasRange);
    EXPECT_EQ(0.0000000001, precision->rangeMin);
    EXPECT_EQ(1.0, precision->rangeMax);
    EXPECT_FALSE(precision->hidden);
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
