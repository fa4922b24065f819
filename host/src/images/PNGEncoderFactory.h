#pragma once

#include "koltx/EncoderFactory.h"

namespace koltx {

class PNGEncoderFactory : public EncoderFactory {
public:
    PNGEncoderFactory();
    Encoder* create(kolt::AttributeMap const* options, kolt::Callbacks* callbacks) const override;
    using EncoderFactory::create;
};

} // namespace koltx
