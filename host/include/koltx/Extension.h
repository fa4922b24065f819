#pragma once

#include "kolt/ContentType.h"

#include <cstdint>

namespace koltx {

// Base of decoders and encoders.
class Extension {
public:
    enum ExtensionType : int32_t {
        ET_UNDEFINED = 0,
        ET_DECODER = 1,
        ET_ENCODER = 2,
    };

    Extension(Extension const&) = delete;
    Extension& operator=(Extension const&) = delete;
    virtual ~Extension();

    virtual ExtensionType getExtensionType() const = 0;
    virtual kolt::ContentType getContentType() const = 0;

protected:
    Extension() = default;
};

} // namespace koltx
