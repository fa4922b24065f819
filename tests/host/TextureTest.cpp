#include "koltx/Texture.h"
#include "koltx/KOLTUtils.h"

#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <vector>

using koltx::Texture;

TEST(Texture, FormatsValidityAndPixelAddressing) {
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
