#include "PNGEncoder.h"

#include "koltx/StatusException.h"

#include <png.h>

#include <climits>
#include <string>

namespace koltx {

PNGEncoder::PNGEncoder(std::wstring const& id, kolt::AttributeMap const* options,
                       kolt::Callbacks* callbacks)
    : ImageEncoder(id, options, callbacks) {}

std::vector<uint8_t> PNGEncoder::encodeImage(Texture const& texture, bool topFirst) const {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = texture.getWidth();
    image.height = texture.getHeight();
    switch (texture.getFormat()) {
    case Texture::FORMAT_RGB8:
        image.format = PNG_FORMAT_RGB;
        break;
    case Texture::FORMAT_RGBA8:
        image.format = PNG_FORMAT_RGBA;
        break;
    case Texture::FORMAT_GREY8:
        image.format = PNG_FORMAT_GRAY;
        break;
    case Texture::FORMAT_GREYA8:
        image.format = PNG_FORMAT_GA;
        break;
    default:
        throw StatusException(kolt::STATUS_TEXTURE_INVALID);
    }
    size_t const stride = size_t(texture.getWidth()) * texture.getBytesPerPixel();
    if (stride > size_t(INT_MAX))
        throw StatusException(kolt::STATUS_TEXTURE_INVALID, "PNG: image too wide");
    // Rows are stored bottom first; a negative stride tells libpng so, which puts the top row
    // first in the file. A positive one writes the rows as they are stored.
    png_int_32 const rowStride = topFirst ? -png_int_32(stride) : png_int_32(stride);

    png_alloc_size_t size = 0;
    void const* pixels = texture.getPixels().data();
    if (!png_image_write_to_memory(&image, nullptr, &size, 0, pixels, rowStride, nullptr))
        throw StatusException(kolt::STATUS_UNSPECIFIED_ERROR, std::string("PNG: ") + image.message);
    std::vector<uint8_t> bytes(size);
    if (!png_image_write_to_memory(&image, bytes.data(), &size, 0, pixels, rowStride, nullptr))
        throw StatusException(kolt::STATUS_UNSPECIFIED_ERROR, std::string("PNG: ") + image.message);
    bytes.resize(size);
    png_image_free(&image);
    return bytes;
}

} // namespace koltx
