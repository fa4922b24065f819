#include "koltx/EncoderInfoBuilder.h"

#include "EncoderInfoData.h"
#include "EncoderInfoImpl.h"
#include "kolt/AttributeMapBuilder.h"

#include <utility>

namespace koltx {

namespace {

std::wstring text(wchar_t const* value) {
    return value == nullptr ? std::wstring() : value;
}

// ".jpg;.jpeg" and ".jpg;.jpeg;" both become ".jpg;.jpeg;"; empty items are dropped.
std::wstring normaliseExtensions(std::wstring const& list) {
    std::wstring out;
    size_t start = 0;
    while (start < list.size()) {
        size_t end = list.find(L';', start);
        if (end == std::wstring::npos)
            end = list.size();
        if (end > start)
            out += list.substr(start, end - start) + L";";
        start = end + 1;
    }
    return out;
}

} // namespace

EncoderInfoBuilder::EncoderInfoBuilder() : data(new EncoderInfoData()) {}

EncoderInfoBuilder::~EncoderInfoBuilder() = default;

EncoderInfoBuilder& EncoderInfoBuilder::setID(wchar_t const* id) {
    data->id = text(id);
    return *this;
}

EncoderInfoBuilder& EncoderInfoBuilder::setName(wchar_t const* name) {
    data->name = text(name);
    return *this;
}

EncoderInfoBuilder& EncoderInfoBuilder::setDescription(wchar_t const* description) {
    data->description = text(description);
    return *this;
}

EncoderInfoBuilder& EncoderInfoBuilder::setExtension(wchar_t const* extension) {
    data->extensions = normaliseExtensions(text(extension));
    return *this;
}

EncoderInfoBuilder& EncoderInfoBuilder::setType(int32_t contentType) {
    data->type = contentType;
    return *this;
}

EncoderInfoBuilder& EncoderInfoBuilder::setIcon(char const* icon) {
    data->icon = icon == nullptr ? std::string() : std::string(icon);
    return *this;
}

EncoderInfoBuilder& EncoderInfoBuilder::setDefaultOptions(kolt::AttributeMap const* options) {
    if (options == nullptr) {
        data->defaultOptions.reset();
        return *this;
    }
    KOLTUtils::AttributeMapBuilderPtr copy(
        kolt::AttributeMapBuilder::createFromAttributeMap(options));
    data->defaultOptions = KOLTUtils::share(copy->createAttributeMap());
    return *this;
}

EncoderInfoBuilder&
EncoderInfoBuilder::setValidator(std::shared_ptr<EncodeOptionsValidator> validator) {
    data->validator = std::move(validator);
    return *this;
}

kolt::EncoderInfo const* EncoderInfoBuilder::create(kolt::Status* status) const {
    if (data->id.empty()) {
        if (status != nullptr)
            *status = kolt::STATUS_ILLEGAL_VALUE;
        return nullptr;
    }
    if (status != nullptr)
        *status = kolt::STATUS_OK;
    return new EncoderInfoImpl(*data);
}

} // namespace koltx
