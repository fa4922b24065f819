#pragma once

#include "kolt/EncoderInfo.h"
#include "koltx/Encoder.h"
#include "koltx/Texture.h"

#include <cstdint>
#include <string>
#include <vector>

namespace koltx {

// Common part of the built-in image encoders: reads the options "textureName", "textureFlipH"
// and "existingFiles", and writes each texture as one output through the
// kolt::SimpleOutputCallbacks it was given.
class ImageEncoder : public Encoder {
public:
    ImageEncoder(std::wstring const& id, kolt::AttributeMap const* options,
                 kolt::Callbacks* callbacks);
    ~ImageEncoder() override;

    kolt::ContentType getContentType() const override { return kolt::CT_TEXTURE; }

    // Throws koltx::StatusException: 27 without output callbacks, 30 for a content that is no
    // valid texture, 43 without a texture name, the callbacks' status when writing fails (the
    // output is then discarded). With "existingFiles" "SKIP" an existing output is left alone.
    void encode(std::vector<std::shared_ptr<Content>> const& contents) override;

    // The information of a built-in image encoder: its options with their defaults
    // ("textureName" "", "textureFlipH" true, "existingFiles" "OVERWRITE"), their annotations and
    // a validator that makes the name a legal file name with one of `extensions`.
    static kolt::EncoderInfo const* makeInfo(wchar_t const* id, wchar_t const* name,
                                             wchar_t const* description, wchar_t const* extensions);

protected:
    // The file bytes of `texture`, top row first when `topFirst`, else in stored order.
    virtual std::vector<uint8_t> encodeImage(Texture const& texture, bool topFirst) const = 0;
};

} // namespace koltx
