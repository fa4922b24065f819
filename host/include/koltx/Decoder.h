#pragma once

#include "koltx/Extension.h"

namespace koltx {

class Decoder : public Extension {
public:
    ~Decoder() override;
    ExtensionType getExtensionType() const override { return ET_DECODER; }
};

} // namespace koltx
