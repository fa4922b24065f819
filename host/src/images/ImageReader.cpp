#include "ImageReader.h"

#include <png.h>

#include <csetjmp>
#include <cstdio>
#include <cstring>
#include <string>

#include <jpeglib.h>

namespace koltx {

namespace {

// Limits against absurd sizes in a damaged or hostile header, checked before pixels are
// allocated: 8192 x 8192 pixels and 256 MB of pixel data.
constexpr uint64_t MaxPixels = uint64_t(1) << 26;
constexpr uint64_t MaxPixelBytes = uint64_t(256) << 20;

// Empty when an image of this size may be decoded, else the reason.
std::string sizeFault(char const* kind, uint64_t width, uint64_t height, uint64_t channels) {
    if (width != 0 && height != 0 && width * height <= MaxPixels &&
        width * height * channels <= MaxPixelBytes)
        return {};
    return std::string(kind) + " of unsupported size " + std::to_string(width) + "x" +
           std::to_string(height) + " (at most " + std::to_string(MaxPixels) + " pixels)";
}

struct JpegErrorManager {
    jpeg_error_mgr base;
    std::jmp_buf jump;
    char message[JMSG_LENGTH_MAX];
};

void onJpegError(j_common_ptr info) {
    auto* manager = reinterpret_cast<JpegErrorManager*>(info->err);
    (*info->err->format_message)(info, manager->message);
    std::longjmp(manager->jump, 1);
}

void onJpegMessage(j_common_ptr /*info*/, int /*level*/) {
    // Corrupt-data warnings are not logged; a result that cannot be read fails through errors.
}

} // namespace

bool ImageReader::isPNG(std::vector<uint8_t> const& bytes) {
    return bytes.size() >= 8 && png_sig_cmp(bytes.data(), 0, 8) == 0;
}

bool ImageReader::isJPEG(std::vector<uint8_t> const& bytes) {
    return bytes.size() >= 3 && bytes[0] == 0xFF && bytes[1] == 0xD8 && bytes[2] == 0xFF;
}

std::shared_ptr<Texture> ImageReader::read(std::vector<uint8_t> const& bytes,
                                           std::shared_ptr<URI> const& uri, std::string& error) {
    if (isPNG(bytes))
        return readPNG(bytes, uri, error);
    if (isJPEG(bytes))
        return readJPEG(bytes, uri, error);
    error = bytes.empty() ? "the file is empty" : "not a PNG or JPEG image";
    return nullptr;
}

std::shared_ptr<Texture> ImageReader::readPNG(std::vector<uint8_t> const& bytes,
                                              std::shared_ptr<URI> const& uri, std::string& error) {
    png_image image;
    std::memset(&image, 0, sizeof(image));
    image.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_memory(&image, bytes.data(), bytes.size())) {
        error = std::string("damaged PNG: ") + image.message;
        png_image_free(&image);
        return nullptr;
    }
    // Keep the channels the image has; palettes and 16-bit samples become 8-bit channels.
    bool const colour = (image.format & PNG_FORMAT_FLAG_COLOR) != 0;
    bool const alpha = (image.format & PNG_FORMAT_FLAG_ALPHA) != 0;
    int32_t format = Texture::FORMAT_UNKNOWN;
    if (colour)
        format = alpha ? Texture::FORMAT_RGBA8 : Texture::FORMAT_RGB8;
    else
        format = alpha ? Texture::FORMAT_GREYA8 : Texture::FORMAT_GREY8;
    image.format = format == Texture::FORMAT_RGBA8    ? PNG_FORMAT_RGBA
                   : format == Texture::FORMAT_RGB8   ? PNG_FORMAT_RGB
                   : format == Texture::FORMAT_GREYA8 ? PNG_FORMAT_GA
                                                      : PNG_FORMAT_GRAY;
    uint32_t const channels = Texture::getChannelCount(format);
    error = sizeFault("PNG", image.width, image.height, channels);
    if (!error.empty()) {
        png_image_free(&image);
        return nullptr;
    }
    uint64_t const pixelCount = uint64_t(image.width) * image.height;
    std::vector<uint8_t> pixels(pixelCount * channels);
    auto const stride = static_cast<png_int_32>(image.width * channels);
    // A negative stride makes libpng fill the buffer from its last row: bottom row first.
    if (!png_image_finish_read(&image, nullptr, pixels.data(), -stride, nullptr)) {
        error = std::string("damaged PNG: ") + image.message;
        png_image_free(&image);
        return nullptr;
    }
    return std::make_shared<Texture>(uri, image.width, image.height, format, std::move(pixels));
}

std::shared_ptr<Texture> ImageReader::readJPEG(std::vector<uint8_t> const& bytes,
                                               std::shared_ptr<URI> const& uri,
                                               std::string& error) {
    jpeg_decompress_struct info;
    JpegErrorManager manager;
    info.err = jpeg_std_error(&manager.base);
    manager.base.error_exit = onJpegError;
    manager.base.emit_message = onJpegMessage;
    manager.message[0] = '\0';
    // Everything that must be released after a jump lives outside the jumping frame.
    std::vector<uint8_t> pixels;
    if (setjmp(manager.jump) != 0) {
        jpeg_destroy_decompress(&info);
        error = std::string("damaged JPEG: ") + manager.message;
        return nullptr;
    }
    jpeg_create_decompress(&info);
    jpeg_mem_src(&info, bytes.data(), static_cast<unsigned long>(bytes.size()));
    jpeg_read_header(&info, TRUE);
    if (info.jpeg_color_space == JCS_CMYK || info.jpeg_color_space == JCS_YCCK) {
        jpeg_destroy_decompress(&info);
        error = "CMYK JPEG images are not supported";
        return nullptr;
    }
    info.out_color_space = info.num_components == 1 ? JCS_GRAYSCALE : JCS_RGB;
    // The header's size decides before the decoder allocates anything for the image.
    error =
        sizeFault("JPEG", info.image_width, info.image_height, info.num_components == 1 ? 1 : 3);
    if (!error.empty()) {
        jpeg_destroy_decompress(&info);
        return nullptr;
    }
    jpeg_start_decompress(&info);
    uint32_t const width = info.output_width;
    uint32_t const height = info.output_height;
    uint32_t const channels = static_cast<uint32_t>(info.output_components);
    pixels.resize(size_t(width) * height * channels);
    size_t const stride = size_t(width) * channels;
    while (info.output_scanline < height) {
        // Row r of the file (top first) goes to row height - 1 - r of the texture.
        JSAMPROW row = pixels.data() + (height - 1 - info.output_scanline) * stride;
        jpeg_read_scanlines(&info, &row, 1);
    }
    jpeg_finish_decompress(&info);
    jpeg_destroy_decompress(&info);
    int32_t const format = channels == 1 ? Texture::FORMAT_GREY8 : Texture::FORMAT_RGB8;
    return std::make_shared<Texture>(uri, width, height, format, std::move(pixels));
}

} // namespace koltx
