#pragma once

#include "ImageEncoder.h"

namespace koltx {

// Writes textures as baseline JPEG at quality 95. JPEG has no alpha: RGBA is written as RGB and
// grey with alpha as grey, the alpha dropped.
class JPGEncoder : public ImageEncoder {
public:
    static constexpr wchar_t const* ID = L"com.morvane.kolt.codecs.JPGEncoder";
    static constexpr int QUALITY = 95;

    JPGEncoder(std::wstring const& id, kolt::AttributeMap const* options,
               kolt::Callbacks* callbacks);

protected:
    std::vector<uint8_t> encodeImage(Texture const& texture, bool topFirst) const override;
};

} // namespace koltx
