#include "EncoderInfoView.h"

namespace koltx {

EncoderInfoView::EncoderInfoView(kolt::EncoderInfo const* info) : info(info) {}

EncoderInfoView::~EncoderInfoView() = default;

wchar_t const* EncoderInfoView::getID() const {
    return info->getID();
}

wchar_t const* EncoderInfoView::getName() const {
    return info->getName();
}

wchar_t const* EncoderInfoView::getDescription() const {
    return info->getDescription();
}

wchar_t const* EncoderInfoView::getExtensions() const {
    return info->getExtensions();
}

int32_t EncoderInfoView::getType() const {
    return info->getType();
}

char const* EncoderInfoView::getIcon() const {
    return info->getIcon();
}

kolt::AttributeMap const* EncoderInfoView::getDefaultOptions() const {
    return info->getDefaultOptions();
}

std::shared_ptr<EncodeOptionsValidator> EncoderInfoView::getValidator() const {
    return info->getValidator();
}

size_t EncoderInfoView::getAnnotationCount() const {
    return info->getAnnotationCount();
}

kolt::EncoderInfo::OptionAnnotation const* EncoderInfoView::getAnnotation(size_t index) const {
    return info->getAnnotation(index);
}

kolt::EncoderInfo::OptionAnnotation const*
EncoderInfoView::findAnnotation(wchar_t const* key) const {
    return info->findAnnotation(key);
}

void EncoderInfoView::createValidatedOptions(kolt::AttributeMap const* options,
                                             kolt::AttributeMap const** validated,
                                             int32_t* status) const {
    info->createValidatedOptions(options, validated, status);
}

} // namespace koltx
