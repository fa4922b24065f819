#include "koltx/Texture.h"

#include <stdexcept>
#include <string>

namespace koltx {

namespace {

// FNV-1a over the pixels and the describing values.
size_t hashContent(uint32_t width, uint32_t height, int32_t format,
                   std::vector<uint8_t> const& pixels) {
    uint64_t hash = 14695981039346656037ull;
    auto const mix = [&hash](uint64_t value) {
        hash ^= value;
        hash *= 1099511628211ull;
    };
    mix(width);
    mix(height);
    mix(static_cast<uint32_t>(format));
    for (uint8_t const byte : pixels)
        mix(byte);
    return static_cast<size_t>(hash);
}

} // namespace

uint32_t Texture::getChannelCount(int32_t format) {
    switch (format) {
    case FORMAT_RGB8:
        return 3;
    case FORMAT_RGBA8:
        return 4;
    case FORMAT_GREY8:
        return 1;
    case FORMAT_GREYA8:
        return 2;
    default:
        return 0;
    }
}

Texture::Texture(std::shared_ptr<URI> uri) : Content(std::move(uri)) {
    contentHash = hashContent(width, height, format, pixels);
}

Texture::Texture(std::shared_ptr<URI> uri, uint32_t width, uint32_t height, int32_t format,
                 std::vector<uint8_t> pixels)
    : Content(std::move(uri)), width(width), height(height), format(format),
      pixels(std::move(pixels)) {
    uint64_t const expected =
        uint64_t(width) * uint64_t(height) * uint64_t(getChannelCount(format));
    if (this->pixels.size() != expected)
        throw std::invalid_argument("texture of " + std::to_string(width) + "x" +
                                    std::to_string(height) + " in format " +
                                    std::to_string(format) + " needs " + std::to_string(expected) +
                                    " bytes, got " + std::to_string(this->pixels.size()));
    contentHash = hashContent(width, height, format, this->pixels);
}

Texture::~Texture() = default;

kolt::ContentType Texture::getContentType() const {
    return kolt::CT_TEXTURE;
}

bool Texture::isValid() const {
    return width > 0 && height > 0 && getChannelCount(format) > 0 && !pixels.empty();
}

uint8_t const* Texture::getPixel(uint32_t x, uint32_t y) const {
    if (x >= width || y >= height || pixels.empty())
        return nullptr;
    return pixels.data() + (size_t(y) * width + x) * getBytesPerPixel();
}

bool Texture::equals(Comparable const& other) const {
    auto const* texture = dynamic_cast<Texture const*>(&other);
    if (texture == nullptr)
        return false;
    if (texture == this)
        return true;
    return contentHash == texture->contentHash && width == texture->width &&
           height == texture->height && format == texture->format && pixels == texture->pixels;
}

} // namespace koltx
