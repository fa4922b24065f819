#include "koltx/EncodeOptionsAnnotator.h"

#include "EncoderInfoData.h"
#include "koltx/EncoderInfoBuilder.h"

#include <utility>

namespace koltx {

EncodeOptionsAnnotator::EncodeOptionsAnnotator(EncoderInfoBuilder& builder) : builder(builder) {}

EncodeOptionsAnnotator::OptionAnnotator EncodeOptionsAnnotator::option(wchar_t const* key) {
    std::wstring name = key == nullptr ? std::wstring() : std::wstring(key);
    builder.data->annotation(name);
    return OptionAnnotator(builder, std::move(name));
}

EncodeOptionsAnnotator::OptionAnnotator::OptionAnnotator(EncoderInfoBuilder& builder,
                                                         std::wstring key)
    : builder(builder), key(std::move(key)) {}

EncodeOptionsAnnotator::OptionAnnotator&
EncodeOptionsAnnotator::OptionAnnotator::setLabel(wchar_t const* label) {
    auto& entry = builder.data->annotation(key);
    entry.label = label == nullptr ? std::wstring() : label;
    entry.hasLabel = label != nullptr;
    return *this;
}

EncodeOptionsAnnotator::OptionAnnotator&
EncodeOptionsAnnotator::OptionAnnotator::setOrder(double const& order) {
    auto& entry = builder.data->annotation(key);
    entry.order = order;
    entry.hasOrder = true;
    return *this;
}

EncodeOptionsAnnotator::OptionAnnotator&
EncodeOptionsAnnotator::OptionAnnotator::setGroup(wchar_t const* group, double const& groupOrder) {
    auto& entry = builder.data->annotation(key);
    entry.group = group == nullptr ? std::wstring() : group;
    entry.hasGroup = group != nullptr;
    entry.groupOrder = groupOrder;
    return *this;
}

EncodeOptionsAnnotator::OptionAnnotator&
EncodeOptionsAnnotator::OptionAnnotator::setDescription(wchar_t const* description) {
    auto& entry = builder.data->annotation(key);
    entry.description = description == nullptr ? std::wstring() : description;
    entry.hasDescription = description != nullptr;
    return *this;
}

EncodeOptionsAnnotator::OptionAnnotator& EncodeOptionsAnnotator::OptionAnnotator::flagAsHidden() {
    builder.data->annotation(key).hidden = true;
    return *this;
}

EncodeOptionsAnnotator::OptionAnnotator&
EncodeOptionsAnnotator::OptionAnnotator::setRange(double min, double max) {
    auto& entry = builder.data->annotation(key);
    entry.rangeMin = min;
    entry.rangeMax = max;
    entry.hasRange = true;
    return *this;
}

} // namespace koltx
