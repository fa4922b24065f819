#include "ImageOptionsValidator.h"

#include "kolt/AttributeMap.h"
#include "kolt/AttributeMapBuilder.h"
#include "kolt/StringUtils.h"
#include "koltx/DefaultNamePreparator.h"

namespace koltx {

ImageOptionsValidator::ImageOptionsValidator(std::wstring const& list) {
    size_t start = 0;
    while (start < list.size()) {
        size_t end = list.find(L';', start);
        if (end == std::wstring::npos)
            end = list.size();
        if (end > start)
            extensions.push_back(list.substr(start, end - start));
        start = end + 1;
    }
}

void ImageOptionsValidator::validate(
    KOLTUtils::ObjectPtr<kolt::AttributeMap const> const& options,
    KOLTUtils::ObjectPtr<kolt::AttributeMapBuilder> const& builder) {
    kolt::Status status = kolt::STATUS_OK;
    wchar_t const* given = options->getString(L"textureName", &status);
    if (status == kolt::STATUS_OK && given != nullptr && *given != 0) {
        std::wstring name = given;
        DefaultNamePreparator(L"_", L"_").legalizeName(name, NamePreparator::KIND_FILE);
        if (!extensions.empty()) {
            size_t const dot = name.rfind(L'.');
            std::wstring const current = dot == std::wstring::npos
                                             ? std::wstring()
                                             : kolt::StringUtils::toLowerASCII(name.substr(dot));
            bool known = false;
            for (auto const& extension : extensions)
                known = known || kolt::StringUtils::toLowerASCII(extension) == current;
            if (!known)
                name =
                    (dot == std::wstring::npos ? name : name.substr(0, dot)) + extensions.front();
        }
        builder->setString(L"textureName", name.c_str());
    }

    wchar_t const* existing = options->getString(L"existingFiles", &status);
    if (status == kolt::STATUS_OK) {
        std::wstring const value =
            existing == nullptr ? std::wstring() : kolt::StringUtils::toLowerASCII(existing);
        builder->setString(L"existingFiles", value == L"skip" ? L"SKIP" : L"OVERWRITE");
    }
}

} // namespace koltx
