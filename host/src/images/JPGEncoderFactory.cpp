#include "JPGEncoderFactory.h"

#include "JPGEncoder.h"

namespace koltx {

JPGEncoderFactory::JPGEncoderFactory()
    : EncoderFactory(ImageEncoder::makeInfo(JPGEncoder::ID, L"JPEG",
                                            L"Encodes textures into JPEG images", L".jpg;.jpeg;")) {
}

Encoder* JPGEncoderFactory::create(kolt::AttributeMap const* options,
                                   kolt::Callbacks* callbacks) const {
    return new JPGEncoder(getID(), options, callbacks);
}

} // namespace koltx
