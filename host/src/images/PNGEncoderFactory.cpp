#include "PNGEncoderFactory.h"

#include "PNGEncoder.h"

namespace koltx {

PNGEncoderFactory::PNGEncoderFactory()
    : EncoderFactory(ImageEncoder::makeInfo(PNGEncoder::ID, L"PNG",
                                            L"Encodes textures into PNG images", L".png;")) {}

Encoder* PNGEncoderFactory::create(kolt::AttributeMap const* options,
                                   kolt::Callbacks* callbacks) const {
    return new PNGEncoder(getID(), options, callbacks);
}

} // namespace koltx
