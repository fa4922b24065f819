#pragma once

#include "EncoderInfoData.h"
#include "kolt/EncoderInfo.h"

#include <vector>

namespace koltx {

class EncoderInfoImpl : public kolt::EncoderInfo {
public:
    explicit EncoderInfoImpl(EncoderInfoData data);

    wchar_t const* getID() const override { return data.id.c_str(); }
    wchar_t const* getName() const override { return data.name.c_str(); }
    wchar_t const* getDescription() const override { return data.description.c_str(); }
    wchar_t const* getExtensions() const override { return data.extensions.c_str(); }
    int32_t getType() const override { return data.type; }
    char const* getIcon() const override { return data.icon.c_str(); }
    kolt::AttributeMap const* getDefaultOptions() const override {
        return data.defaultOptions.get();
    }
    std::shared_ptr<EncodeOptionsValidator> getValidator() const override { return data.validator; }
    size_t getAnnotationCount() const override { return annotations.size(); }
    OptionAnnotation const* getAnnotation(size_t index) const override;
    OptionAnnotation const* findAnnotation(wchar_t const* key) const override;
    void createValidatedOptions(kolt::AttributeMap const* options,
                                kolt::AttributeMap const** validated,
                                kolt::Status* status) const override;

private:
    ~EncoderInfoImpl() override;

    EncoderInfoData data;
    std::vector<OptionAnnotation> annotations;
};

} // namespace koltx
