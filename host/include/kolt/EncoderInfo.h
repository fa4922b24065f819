#pragma once

#include "kolt/Object.h"
#include "kolt/Status.h"

#include <cstddef>
#include <cstdint>
#include <memory>

namespace koltx {
class EncodeOptionsValidator;
}

namespace kolt {

class AttributeMap;

// What the host knows about an encoder: identity, file extensions, options and their
// presentation. Made by koltx::EncoderInfoBuilder::create and released with destroy().
class EncoderInfo : public Object {
public:
    // Presentation of one option, as recorded by koltx::EncodeOptionsAnnotator.
    struct OptionAnnotation {
        wchar_t const* key = nullptr;
        wchar_t const* label = nullptr;       // null when not set
        wchar_t const* description = nullptr; // null when not set
        wchar_t const* group = nullptr;       // null when not set
        bool hasOrder = false;
        double order = 0.0;
        double groupOrder = 0.0;
        bool hidden = false;
        bool hasRange = false;
        double rangeMin = 0.0;
        double rangeMax = 0.0;
    };

    virtual wchar_t const* getID() const = 0;
    virtual wchar_t const* getName() const = 0;
    virtual wchar_t const* getDescription() const = 0;
    // The extensions the encoder writes, each followed by ";", e.g. ".jpg;.jpeg;".
    virtual wchar_t const* getExtensions() const = 0;
    virtual int32_t getType() const = 0;
    // Base64 text of the icon image, or an empty string.
    virtual char const* getIcon() const = 0;

    // May be null when the encoder has no options.
    virtual AttributeMap const* getDefaultOptions() const = 0;
    // May be null when the encoder has no validator.
    virtual std::shared_ptr<koltx::EncodeOptionsValidator> getValidator() const = 0;

    virtual size_t getAnnotationCount() const = 0;
    virtual OptionAnnotation const* getAnnotation(size_t index) const = 0;
    // Null when the key has no annotation.
    virtual OptionAnnotation const* findAnnotation(wchar_t const* key) const = 0;

    // Makes a new map: the default options, overlaid with every value of `options` whose key and
    // type match a default, then corrected by the validator. `*validated` receives the map (owned
    // by the caller, released with destroy()) or null on failure. A value of another type than
    // its default is an error naming the key: with `status` given it is set to
    // STATUS_KEY_TYPE_MISMATCH and the message is logged, without it koltx::StatusException is
    // thrown with the message. A validator that throws fails the same way (STATUS_UNSPECIFIED_ERROR
    // unless it threw a koltx::StatusException).
    // `status` is set to 0 on success.
    virtual void createValidatedOptions(AttributeMap const* options, AttributeMap const** validated,
                                        Status* status) const = 0;

protected:
    EncoderInfo() = default;
    ~EncoderInfo() = default;
};

} // namespace kolt
