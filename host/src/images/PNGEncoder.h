#pragma once

#include "ImageEncoder.h"

namespace koltx {

// Writes textures as PNG, in their own format (grey, grey with alpha, RGB, RGBA; 8 bits).
class PNGEncoder : public ImageEncoder {
public:
    static constexpr wchar_t const* ID = L"com.morvane.kolt.codecs.PNGEncoder";

    PNGEncoder(std::wstring const& id, kolt::AttributeMap const* options,
               kolt::Callbacks* callbacks);

protected:
    std::vector<uint8_t> encodeImage(Texture const& texture, bool topFirst) const override;
};

} // namespace koltx
