#pragma once

#include "koltx/EncoderFactory.h"

namespace koltx {

class JPGEncoderFactory : public EncoderFactory {
public:
    JPGEncoderFactory();
    Encoder* create(kolt::AttributeMap const* options, kolt::Callbacks* callbacks) const override;
    using EncoderFactory::create;
};

} // namespace koltx
