#pragma once

#include "koltx/Comparable.h"
#include "koltx/Content.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace koltx {

// An image in memory. Rows are stored bottom row first; pixels are 8-bit channels packed
// per row without padding.
class Texture : public Content, public Comparable {
public:
    static constexpr int32_t FORMAT_UNKNOWN = 0;
    static constexpr int32_t FORMAT_RGB8 = 1;
    static constexpr int32_t FORMAT_RGBA8 = 2;
    static constexpr int32_t FORMAT_GREY8 = 3;
    static constexpr int32_t FORMAT_GREYA8 = 4;

    // Channels of a format, 0 for FORMAT_UNKNOWN or an unknown code.
    static uint32_t getChannelCount(int32_t format);

    // A texture that stands for no image, e.g. one that could not be read.
    explicit Texture(std::shared_ptr<URI> uri);
    // Throws std::invalid_argument if `pixels` does not hold width * height pixels of `format`.
    Texture(std::shared_ptr<URI> uri, uint32_t width, uint32_t height, int32_t format,
            std::vector<uint8_t> pixels);
    ~Texture() override;

    kolt::ContentType getContentType() const override;

    // True if the texture stands for a real image.
    bool isValid() const;
    int32_t getFormat() const { return format; }
    uint32_t getWidth() const { return width; }
    uint32_t getHeight() const { return height; }
    uint32_t getBytesPerPixel() const { return getChannelCount(format); }
    std::vector<uint8_t> const& getPixels() const { return pixels; }
    // Pixel (x, y) with y counted from the bottom row; null when outside.
    uint8_t const* getPixel(uint32_t x, uint32_t y) const;

    // Same format, size and pixel bytes; the URI is not compared.
    bool equals(Comparable const& other) const override;
    size_t hash() const override { return contentHash; }
    bool operator==(Texture const& other) const { return equals(other); }
    bool operator!=(Texture const& other) const { return !equals(other); }

private:
    uint32_t width = 0;
    uint32_t height = 0;
    int32_t format = FORMAT_UNKNOWN;
    std::vector<uint8_t> pixels;
    size_t contentHash = 0;
};

using TexturePtr = std::shared_ptr<Texture>;

} // namespace koltx
