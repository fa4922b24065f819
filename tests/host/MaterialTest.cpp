#include "koltx/MaterialBuilder.h"
#include "koltx/Texture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <vector>

using koltx::MaterialBuilder;

namespace {

std::shared_ptr<koltx::Texture> texture(uint8_t value, wchar_t const* uri) {
    return std::make_shared<koltx::Texture>(
        koltx::URI::create(uri), 1, 1, koltx::Texture::FORMAT_GREY8, std::vector<uint8_t>{value});
}

} // namespace

TEST(Material, EqualityComparesEveryFieldAndTexturesByContent) {
    auto const make = [](auto&& change) {
        MaterialBuilder builder;
        builder.name(L"wall").diffuseColor({0.5, 0.25, 1}).shininess(0.3).opacity(0.8);
        builder.diffuseMap({texture(7, L"file:///a.png")}, {L"a.png"});
        change(builder);
        return builder.createSharedAndReset(nullptr);
    };
    auto const base = make([](MaterialBuilder&) {});
    // The same pixels under another URI are the same texture.
    auto const sameContent = make(
        [](MaterialBuilder& b) { b.diffuseMap({texture(7, L"file:///other.png")}, {L"a.png"}); });
    EXPECT_TRUE(base->equals(*sameContent));
    EXPECT_EQ(base->hash(), sameContent->hash());
    EXPECT_TRUE(*base == *sameContent);

    std::vector<std::function<void(MaterialBuilder&)>> const changes = {
        [](MaterialBuilder& b) { b.name(L"roof"); },
        [](MaterialBuilder& b) {
            b.ambientColor({0.1, 0, 0});
        },
        [](MaterialBuilder& b) {
            b.diffuseColor({0.5, 0.25, 0.9});
        },
        [](MaterialBuilder& b) {
            b.emissiveColor({0, 0, 0.1});
        },
        [](MaterialBuilder& b) {
            b.specularColor({0, 0.1, 0});
        },
        [](MaterialBuilder& b) { b.shininess(0.4); },
        [](MaterialBuilder& b) { b.opacity(0.7); },
        [](MaterialBuilder& b) { b.diffuseMap({texture(8, L"file:///a.png")}, {L"a.png"}); },
        [](MaterialBuilder& b) { b.diffuseMap({nullptr}, {L"a.png"}); },
        [](MaterialBuilder& b) { b.diffuseMap({texture(7, L"file:///a.png")}, {L"b.png"}); },
        [](MaterialBuilder& b) { b.diffuseMap({}, {}); },
    };
    for (size_t i = 0; i < changes.size(); ++i)
        EXPECT_FALSE(base->equals(*make(changes[i]))) << "change " << i;

    // A texture is no material.
    EXPECT_FALSE(base->equals(*texture(7, L"file:///a.png")));
}

TEST(Material, ValuesThatCannotStandAreCorrectedWithWarnings) {
    MaterialBuilder builder;
    builder.diffuseColor({1, 0}).opacity(1.5).shininess(-2);
    builder.diffuseMap({texture(1, L"x"), texture(2, L"y")}, {L"x"});
    std::wstring warnings;
    auto const material = builder.createSharedAndReset(&warnings);
    EXPECT_EQ(material->getDiffuseColor(), (std::vector<double>{1, 1, 1}));
    EXPECT_EQ(material->getOpacity(), 1.0);
    EXPECT_EQ(material->getShininess(), 0.0);
    EXPECT_EQ(material->getDiffuseMapKeys(), (std::vector<std::wstring>{L"x", L""}));
    EXPECT_EQ(std::count(warnings.begin(), warnings.end(), L'\n'), 4);
    EXPECT_NE(warnings.find(L"diffuse colour with 2 entries"), std::wstring::npos);

    // The builder is back at its defaults and without the old warnings.
    std::wstring none;
    auto const next = builder.createSharedAndReset(&none);
    EXPECT_TRUE(none.empty());
    EXPECT_TRUE(next->equals(*MaterialBuilder().createSharedAndReset(nullptr)));
}
