#pragma once

#include <string>

namespace koltx {

class EncoderInfoBuilder;

// Records how the host presents the options of an encoder, into the builder's information.
class EncodeOptionsAnnotator {
public:
    class OptionAnnotator {
    public:
        OptionAnnotator& setLabel(wchar_t const* label);
        OptionAnnotator& setOrder(double const& order);
        OptionAnnotator& setGroup(wchar_t const* group, double const& groupOrder);
        OptionAnnotator& setDescription(wchar_t const* description);
        OptionAnnotator& flagAsHidden();
        OptionAnnotator& setRange(double min, double max);

    private:
        friend class EncodeOptionsAnnotator;
        OptionAnnotator(EncoderInfoBuilder& builder, std::wstring key);

        EncoderInfoBuilder& builder;
        std::wstring key;
    };

    explicit EncodeOptionsAnnotator(EncoderInfoBuilder& builder);

    // Annotations of `key`; the first call for a key fixes its place in the annotation order.
    OptionAnnotator option(wchar_t const* key);

private:
    EncoderInfoBuilder& builder;
};

} // namespace koltx
