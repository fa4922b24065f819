#include "JPGEncoder.h"

#include "koltx/StatusException.h"

#include <csetjmp>
#include <cstdio>
#include <cstdlib>
#include <string>

#include <jpeglib.h>

namespace koltx {

namespace {

struct ErrorManager {
    jpeg_error_mgr base;
    std::jmp_buf jump;
    char message[JMSG_LENGTH_MAX];
};

void onError(j_common_ptr info) {
    auto* errors = reinterpret_cast<ErrorManager*>(info->err);
    (*info->err->format_message)(info, errors->message);
    std::longjmp(errors->jump, 1);
}

// Only plain data lives in this frame, so the jump back from libjpeg skips no destructor.
// Returns false with `message` filled on failure; `out` is malloc'd by libjpeg.
bool compress(uint8_t const* rows, uint32_t width, uint32_t height, int components, size_t stride,
              bool bottomFirst, unsigned char** out, unsigned long* outSize, char* message) {
    jpeg_compress_struct info;
    ErrorManager errors;
    info.err = jpeg_std_error(&errors.base);
    errors.base.error_exit = onError;
    errors.message[0] = 0;
    if (setjmp(errors.jump)) {
        std::snprintf(message, JMSG_LENGTH_MAX, "%s", errors.message);
        jpeg_destroy_compress(&info);
        return false;
    }
    jpeg_create_compress(&info);
    jpeg_mem_dest(&info, out, outSize);
    info.image_width = width;
    info.image_height = height;
    info.input_components = components;
    info.in_color_space = components == 3 ? JCS_RGB : JCS_GRAYSCALE;
    jpeg_set_defaults(&info);
    jpeg_set_quality(&info, JPGEncoder::QUALITY, TRUE);
    jpeg_start_compress(&info, TRUE);
    while (info.next_scanline < info.image_height) {
        uint32_t const row = bottomFirst ? height - 1 - info.next_scanline : info.next_scanline;
        JSAMPROW pointer = const_cast<JSAMPROW>(rows + size_t(row) * stride);
        jpeg_write_scanlines(&info, &pointer, 1);
    }
    jpeg_finish_compress(&info);
    jpeg_destroy_compress(&info);
    return true;
}

} // namespace

JPGEncoder::JPGEncoder(std::wstring const& id, kolt::AttributeMap const* options,
                       kolt::Callbacks* callbacks)
    : ImageEncoder(id, options, callbacks) {}

std::vector<uint8_t> JPGEncoder::encodeImage(Texture const& texture, bool topFirst) const {
    uint32_t const channels = texture.getBytesPerPixel();
    if (channels == 0)
        throw StatusException(kolt::STATUS_TEXTURE_INVALID);
    int const components = channels >= 3 ? 3 : 1;
    uint32_t const width = texture.getWidth(), height = texture.getHeight();
    auto const& pixels = texture.getPixels();

    // Drop alpha where there is one, so every row is plain samples.
    std::vector<uint8_t> plain;
    uint8_t const* rows = pixels.data();
    if (channels != uint32_t(components)) {
        size_t const count = size_t(width) * height;
        plain.resize(count * size_t(components));
        for (size_t p = 0; p < count; ++p)
            for (int c = 0; c < components; ++c)
                plain[p * size_t(components) + size_t(c)] = pixels[p * channels + size_t(c)];
        rows = plain.data();
    }
    unsigned char* out = nullptr;
    unsigned long outSize = 0;
    char message[JMSG_LENGTH_MAX] = {0};
    // Stored rows are bottom first: the file gets the top row first when `topFirst`.
    bool const ok = compress(rows, width, height, components, size_t(width) * size_t(components),
                             topFirst, &out, &outSize, message);
    std::vector<uint8_t> bytes;
    if (ok && out != nullptr)
        bytes.assign(out, out + outSize);
    std::free(out);
    if (!ok)
        throw StatusException(kolt::STATUS_UNSPECIFIED_ERROR, std::string("JPEG: ") + message);
    return bytes;
}

} // namespace koltx
