#include "koltx/Texture.h"
#include "kolt/Cache.h"
#include "koltx/KOLTUtils.h"

#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <thread>
#include <vector>

using koltx::Texture;

TEST(Texture, FormatsValidityAndPixelAddressing) {
    EXPECT_EQ(Texture::getChannelCount(Texture::FORMAT_UNKNOWN), 0u);
    EXPECT_EQ(Texture::getChannelCount(Texture::FORMAT_RGB8), 3u);
    EXPECT_EQ(Texture::getChannelCount(Texture::FORMAT_RGBA8), 4u);
    EXPECT_EQ(Texture::getChannelCount(Texture::FORMAT_GREY8), 1u);
    EXPECT_EQ(Texture::getChannelCount(Texture::FORMAT_GREYA8), 2u);
    EXPECT_EQ(Texture::FORMAT_RGB8, 1);
    EXPECT_EQ(Texture::FORMAT_GREYA8, 4);

    // 2 x 2 grey+alpha, bottom row first.
    Texture const texture(koltx::URI::create(L"file:///t.png"), 2, 2, Texture::FORMAT_GREYA8,
                          {10, 11, 20, 21, 30, 31, 40, 41});
    EXPECT_TRUE(texture.isValid());
    EXPECT_EQ(texture.getContentType(), kolt::CT_TEXTURE);
    EXPECT_EQ(texture.getURI()->getExtension(), L".png");
    EXPECT_EQ(texture.getBytesPerPixel(), 2u);
    EXPECT_EQ(texture.getPixel(1, 0)[0], 20);
    EXPECT_EQ(texture.getPixel(0, 1)[1], 31);
    EXPECT_EQ(texture.getPixel(2, 0), nullptr);

    Texture const empty(koltx::URI::create(L"file:///missing.png"));
    EXPECT_FALSE(empty.isValid());
    EXPECT_EQ(empty.getFormat(), Texture::FORMAT_UNKNOWN);
    EXPECT_THROW(Texture(nullptr, 2, 2, Texture::FORMAT_RGB8, {1, 2, 3}), std::invalid_argument);
    EXPECT_FALSE(Texture(nullptr, 1, 1, 9, {}).isValid());
}

TEST(Texture, EqualityByContentNotAddressOrURI) {
    Texture const a(koltx::URI::create(L"a.png"), 1, 2, Texture::FORMAT_RGB8, {1, 2, 3, 4, 5, 6});
    Texture const b(koltx::URI::create(L"b.jpg"), 1, 2, Texture::FORMAT_RGB8, {1, 2, 3, 4, 5, 6});
    Texture const otherPixels(nullptr, 1, 2, Texture::FORMAT_RGB8, {1, 2, 3, 4, 5, 7});
    Texture const otherShape(nullptr, 2, 1, Texture::FORMAT_RGB8, {1, 2, 3, 4, 5, 6});
    Texture const otherFormat(nullptr, 3, 1, Texture::FORMAT_GREYA8, {1, 2, 3, 4, 5, 6});
    EXPECT_TRUE(a == b);
    EXPECT_EQ(a.hash(), b.hash());
    EXPECT_TRUE(a != otherPixels);
    EXPECT_TRUE(a != otherShape);
    EXPECT_TRUE(a != otherFormat);
    EXPECT_TRUE(Texture(nullptr) == Texture(koltx::URI::create(L"x")));
}

TEST(Cache, SharesFirstStoredContentAcrossThreads) {
    koltx::KOLTUtils::ObjectPtr<kolt::Cache> cache(kolt::Cache::create());
    ASSERT_TRUE(cache);
    EXPECT_EQ(cache->get(kolt::CT_TEXTURE, L"k"), nullptr);

    std::vector<std::shared_ptr<koltx::Content>> winners(8);
    std::vector<std::thread> threads;
    for (size_t t = 0; t < winners.size(); ++t) {
        threads.emplace_back([&, t] {
            for (int i = 0; i < 200; ++i) {
                auto texture = std::make_shared<Texture>(nullptr, 1, 1, Texture::FORMAT_GREY8,
                                                         std::vector<uint8_t>{uint8_t(t)});
                cache->insert(kolt::CT_TEXTURE, L"key" + std::to_wstring(i), texture);
            }
            winners[t] = cache->get(kolt::CT_TEXTURE, L"key7");
        });
    }
    for (auto& thread : threads)
        thread.join();
    EXPECT_EQ(cache->size(), 200u);
    for (auto const& winner : winners)
        EXPECT_EQ(winner, winners[0]);
    // Keys of different content types do not collide.
    EXPECT_EQ(cache->get(kolt::CT_GEOMETRY, L"key7"), nullptr);
    cache->flushAll();
    EXPECT_EQ(cache->size(), 0u);
}
