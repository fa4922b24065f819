#pragma once

#include "koltx/KOLTUtils.h"

namespace kolt {
class AttributeMap;
class AttributeMapBuilder;
} // namespace kolt

namespace koltx {

// Corrects the options of an encoder. `options` holds the values to check (defaults overlaid with
// the caller's); corrections are written into `builder`, which starts with those same values.
class EncodeOptionsValidator {
public:
    virtual ~EncodeOptionsValidator() = default;
    virtual void validate(KOLTUtils::ObjectPtr<kolt::AttributeMap const> const& options,
                          KOLTUtils::ObjectPtr<kolt::AttributeMapBuilder> const& builder) = 0;

protected:
    EncodeOptionsValidator() = default;
};

} // namespace koltx
