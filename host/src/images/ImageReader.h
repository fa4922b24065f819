#pragma once

#include "koltx/Texture.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace koltx {

// Decodes PNG and JPEG images, recognised by their first bytes, into textures stored bottom
// row first.
class ImageReader {
public:
    // Null with `error` set when the bytes are no image of a known kind or are damaged.
    static std::shared_ptr<Texture> read(std::vector<uint8_t> const& bytes,
                                         std::shared_ptr<URI> const& uri, std::string& error);
    static bool isPNG(std::vector<uint8_t> const& bytes);
    static bool isJPEG(std::vector<uint8_t> const& bytes);

private:
    static std::shared_ptr<Texture> readPNG(std::vector<uint8_t> const& bytes,
                                            std::shared_ptr<URI> const& uri, std::string& error);
    static std::shared_ptr<Texture> readJPEG(std::vector<uint8_t> const& bytes,
                                             std::shared_ptr<URI> const& uri, std::string& error);
};

} // namespace koltx
