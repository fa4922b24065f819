#pragma once

#include "koltx/EncodeOptionsValidator.h"

#include <string>
#include <vector>

namespace koltx {

// Options of the built-in image encoders: "textureName" becomes a legal file name whose
// extension is one of the encoder's (another or none is replaced by the first), and
// "existingFiles" becomes "OVERWRITE" or "SKIP" (case ignored; anything else is "OVERWRITE").
class ImageOptionsValidator : public EncodeOptionsValidator {
public:
    // `extensions` as the encoder information gives them, e.g. ".jpg;.jpeg;".
    explicit ImageOptionsValidator(std::wstring const& extensions);

    void validate(KOLTUtils::ObjectPtr<kolt::AttributeMap const> const& options,
                  KOLTUtils::ObjectPtr<kolt::AttributeMapBuilder> const& builder) override;

private:
    std::vector<std::wstring> extensions;
};

} // namespace koltx
