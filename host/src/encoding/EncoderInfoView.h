#pragma once

#include "kolt/EncoderInfo.h"

namespace koltx {

// A separately destroyable handle on encoder information that a factory keeps: every query goes
// to the factory's object, and destroy() frees only the handle.
class EncoderInfoView : public kolt::EncoderInfo {
public:
    explicit EncoderInfoView(kolt::EncoderInfo const* info);

    wchar_t const* getID() const override;
    wchar_t const* getName() const override;
    wchar_t const* getDescription() const override;
    wchar_t const* getExtensions() const override;
    int32_t getType() const override;
    char const* getIcon() const override;
    kolt::AttributeMap const* getDefaultOptions() const override;
    std::shared_ptr<EncodeOptionsValidator> getValidator() const override;
    size_t getAnnotationCount() const override;
    OptionAnnotation const* getAnnotation(size_t index) const override;
    OptionAnnotation const* findAnnotation(wchar_t const* key) const override;
    void createValidatedOptions(kolt::AttributeMap const* options,
                                kolt::AttributeMap const** validated,
                                int32_t* status) const override;

protected:
    ~EncoderInfoView() override;

private:
    kolt::EncoderInfo const* info;
};

} // namespace koltx
