#include "koltx/EncoderFactory.h"

#include "kolt/EncoderInfo.h"
#include "koltx/StatusException.h"

#include <stdexcept>

namespace koltx {

namespace {

std::wstring text(wchar_t const* value) {
    return value != nullptr ? value : L"";
}

kolt::EncoderInfo const* checked(kolt::EncoderInfo const* info) {
    if (info == nullptr)
        throw std::invalid_argument("encoder factory without encoder information");
    return info;
}

} // namespace

EncoderFactory::EncoderFactory(kolt::EncoderInfo const* info)
    : ExtensionFactory(static_cast<kolt::ContentType>(checked(info)->getType()),
                       text(info->getID()), text(info->getName()), text(info->getDescription())),
      info(info), extensions(text(info->getExtensions())) {}

EncoderFactory::~EncoderFactory() {
    if (defaultOptions != nullptr)
        defaultOptions->destroy();
    info->destroy();
}

Extension* EncoderFactory::create() const {
    std::lock_guard<std::mutex> lock(defaultOptionsMutex);
    if (defaultOptions == nullptr) {
        kolt::Status status = kolt::STATUS_OK;
        kolt::AttributeMap const* validated = nullptr;
        info->createValidatedOptions(nullptr, &validated, &status);
        if (status != kolt::STATUS_OK || validated == nullptr)
            throw StatusException(status != kolt::STATUS_OK ? status
                                                            : kolt::STATUS_UNSPECIFIED_ERROR);
        defaultOptions = validated;
    }
    return create(defaultOptions, nullptr);
}

bool EncoderFactory::canHandleURI(std::wstring const& uri) const {
    return extensions.matches(uri);
}

} // namespace koltx
