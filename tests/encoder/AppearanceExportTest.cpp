#include "EncoderTestSupport.h"

#include <encoder/AppearanceExport.h>

#include <gml/BasicMaterialAppearanceMemberNode.h>
#include <gml/TextureAppearanceMemberNode.h>

#include <koltx/DefaultNamePreparator.h>
#include <koltx/StatusException.h>

#include <gtest/gtest.h>

namespace {

struct Exporter {
    Exporter()
        : names(L"_", L"_"), document(4, preparator, names, names.newNamespace(), &outputs) {}

    std::shared_ptr<gml::AppearanceMemberNode>
    member(std::shared_ptr<koltx::Material> const& material) {
        return getAppearanceMember(document, material);
    }

    koltx::MemoryOutputCallbacks outputs;
    std::shared_ptr<koltx::EncodePreparator> preparator;
    koltx::DefaultNamePreparator names;
    CityModelDocument document;
};

bool startsWith(std::vector<uint8_t> const& bytes, std::string const& magic) {
    return bytes.size() >= magic.size() &&
           std::equal(magic.begin(), magic.end(), bytes.begin(),
                      [](char a, uint8_t b) { return static_cast<uint8_t>(a) == b; });
}

std::string const pngMagic = "\x89PNG";
std::string const jpgMagic = "\xFF\xD8\xFF";

} // namespace

TEST(AppearanceExport, OneMemberAndOneImagePerDistinctTexture) {
    Exporter e;
    auto const wall = enctest::makeTexture(L"file:///data/tex/wall.png", 1);
    auto const sameContent = enctest::makeTexture(L"file:///data/other/copy.png", 1);
    auto const roof = enctest::makeTexture(L"file:///data/tex2/wall.png", 2);

    auto const first = e.member(enctest::makeMaterial(L"m1", {1, 0, 0}, {wall}));
    auto const texture = std::dynamic_pointer_cast<gml::TextureAppearanceMemberNode>(first);
    ASSERT_TRUE(texture);
    EXPECT_EQ(L"wall.png", texture->imageUri);
    EXPECT_EQ(L"m1", texture->name);
    // Another colour with the same picture shares the member; the colour is lost.
    EXPECT_EQ(first, e.member(enctest::makeMaterial(L"m2", {0, 1, 0}, {sameContent})));
    // Another picture under the same file name gets a name of its own.
    auto const second = std::dynamic_pointer_cast<gml::TextureAppearanceMemberNode>(
        e.member(enctest::makeMaterial(L"m3", {1, 1, 1}, {roof})));
    ASSERT_TRUE(second);
    EXPECT_EQ(L"wall_1.png", second->imageUri);

    EXPECT_EQ((std::vector<std::wstring>{L"wall.png", L"wall_1.png"}), e.outputs.getNames());
    EXPECT_TRUE(startsWith(e.outputs.find(L"wall.png")->bytes, pngMagic));
    EXPECT_EQ(2u, e.document.appearanceMembers.size());
    EXPECT_EQ((std::set<std::wstring>{L"app"}), e.document.usedPrefixes);
}

TEST(AppearanceExport, ChoosesTheImageEncoderByExtensionThenFormat) {
    Exporter e;
    using koltx::Texture;
    auto name = [&](std::wstring const& uri, std::uint8_t seed, std::int32_t format) {
        auto member = std::dynamic_pointer_cast<gml::TextureAppearanceMemberNode>(e.member(
            enctest::makeMaterial(L"m", {1, 1, 1}, {enctest::makeTexture(uri, seed, format)})));
        return member ? member->imageUri : L"(none)";
    };
    // ".png" always goes to PNG, whatever the format.
    EXPECT_EQ(L"a.png", name(L"file:///x/a.png", 1, Texture::FORMAT_RGB8));
    // Formats without alpha go to JPG, and a listed extension is kept.
    EXPECT_EQ(L"b.jpg", name(L"file:///x/b.jpg", 2, Texture::FORMAT_GREY8));
    EXPECT_EQ(L"c.jpeg", name(L"file:///x/c.jpeg", 3, Texture::FORMAT_RGB8));
    // Upper case is no ".png": by format to JPG, whose first extension replaces the unlisted one.
    EXPECT_EQ(L"d.jpg", name(L"file:///x/d.PNG", 4, Texture::FORMAT_RGB8));
    // With alpha the image goes to PNG even from a ".jpg" file.
    EXPECT_EQ(L"e.png", name(L"file:///x/e.jpg", 5, Texture::FORMAT_RGBA8));
    EXPECT_EQ(L"f.png", name(L"file:///x/f.tga", 6, Texture::FORMAT_GREYA8));
    // A blank in the file name survives as the file system allows.
    EXPECT_EQ(L"my_wall.png", name(L"file:///x/my%20wall.png", 7, Texture::FORMAT_RGBA8));

    EXPECT_TRUE(startsWith(e.outputs.find(L"b.jpg")->bytes, jpgMagic));
    EXPECT_TRUE(startsWith(e.outputs.find(L"a.png")->bytes, pngMagic));
    EXPECT_TRUE(startsWith(e.outputs.find(L"e.png")->bytes, pngMagic));
}

TEST(AppearanceExport, MaterialsWithoutUsableTextures) {
    Exporter e;
    auto const valid = enctest::makeTexture(L"file:///x/second.png", 9);
    auto const invalid = std::make_shared<koltx::Texture>(koltx::URI::create(L"file:///x/bad.png"));
    // A null first entry is skipped; the second, valid one is exported.
    auto const withSecond = std::dynamic_pointer_cast<gml::TextureAppearanceMemberNode>(
        e.member(enctest::makeMaterial(L"m", {1, 1, 1}, {nullptr, valid})));
    ASSERT_TRUE(withSecond);
    EXPECT_EQ(L"second.png", withSecond->imageUri);

    // Only invalid textures: a plain material member, reused for equal values.
    auto const red = e.member(enctest::makeMaterial(L"red", {1, 0, 0}, {invalid}));
    EXPECT_TRUE(std::dynamic_pointer_cast<gml::BasicMaterialAppearanceMemberNode>(red));
    EXPECT_EQ(red, e.member(enctest::makeMaterial(L"red", {1, 0, 0})));
    EXPECT_NE(red, e.member(enctest::makeMaterial(L"red", {0.5, 0, 0})));
    EXPECT_EQ(3u, e.document.appearanceMembers.size());
    EXPECT_EQ(1u, e.outputs.getNames().size());

    // The host's default material and a missing one have no appearance.
    Exporter plain;
    EXPECT_EQ(nullptr, plain.member(koltx::MaterialBuilder().createSharedAndReset(nullptr)));
    EXPECT_EQ(nullptr, plain.member(nullptr));
    EXPECT_TRUE(plain.document.appearanceMembers.empty());
    EXPECT_TRUE(plain.document.usedPrefixes.empty());
}

TEST(AppearanceExport, FailuresReachTheCaller) {
    koltx::MemoryOutputCallbacks outputs;
    koltx::DefaultNamePreparator names(L"_", L"_");
    auto const space = names.newNamespace();
    auto const invalid = std::make_shared<koltx::Texture>(koltx::URI::create(L"file:///x/a.png"));
    try {
        exportTexture(invalid, &outputs, names, space);
        FAIL() << "no exception";
    } catch (koltx::StatusException const& ex) {
        EXPECT_EQ(30, ex.getStatus());
    }
    EXPECT_THROW(exportTexture(nullptr, &outputs, names, space), koltx::StatusException);

    // An image encoder without a usable output passes its failure on, and nothing is kept.
    Exporter e;
    e.document.callbacks = nullptr;
    EXPECT_ANY_THROW(e.member(
        enctest::makeMaterial(L"m", {1, 1, 1}, {enctest::makeTexture(L"file:///a.png", 1)})));
    EXPECT_TRUE(e.document.appearanceMembers.empty());
}

TEST(AppearanceExport, ExtensionListsAndFileNames) {
    EXPECT_EQ(L".jpeg", chooseImageExtension(L"com.morvane.kolt.codecs.JPGEncoder", L".jpeg"));
    EXPECT_EQ(L".jpg", chooseImageExtension(L"com.morvane.kolt.codecs.JPGEncoder", L".png"));
    // An item must be followed by ";" to be found.
    EXPECT_EQ(L".png", chooseImageExtension(L"com.morvane.kolt.codecs.PNGEncoder", L".pn"));
    // The empty extension is "found" before the first ";" and stays empty.
    EXPECT_EQ(L"", chooseImageExtension(L"com.morvane.kolt.codecs.PNGEncoder", L""));
    EXPECT_EQ(L"/wall.png", makeImageFileName(L"wall.tga", L".png"));
    EXPECT_EQ(L"/my wall.jpg", makeImageFileName(L"my wall.jpg", L".jpg"));
}
