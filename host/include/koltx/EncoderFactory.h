#pragma once

#include "kolt/AttributeMap.h"
#include "koltx/Encoder.h"
#include "koltx/ExtensionFactory.h"
#include "koltx/FileExtensions.h"

#include <mutex>
#include <string>

namespace kolt {
class Callbacks;
class EncoderInfo;
} // namespace kolt

namespace koltx {

// Factory of an encoder, described by its encoder information.
class EncoderFactory : public ExtensionFactory {
public:
    // Takes ownership of `info`, which must not be null.
    explicit EncoderFactory(kolt::EncoderInfo const* info);
    ~EncoderFactory() override;

    // An encoder with the validated default options and no callbacks; the options live as
    // long as the factory.
    Extension* create() const override;
    Extension::ExtensionType getExtensionType() const override { return Extension::ET_ENCODER; }
    bool canHandleURI(std::wstring const& uri) const override;
    // A new encoder, owned by the caller, that borrows `options` and `callbacks`.
    virtual Encoder* create(kolt::AttributeMap const* options,
                            kolt::Callbacks* callbacks) const = 0;

    kolt::EncoderInfo const* getEncoderInfo() const { return info; }

private:
    kolt::EncoderInfo const* info;
    FileExtensions extensions;
    mutable std::mutex defaultOptionsMutex;
    mutable kolt::AttributeMap const* defaultOptions = nullptr;
};

} // namespace koltx
