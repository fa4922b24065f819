#include "EncoderInfoImpl.h"

#include "kolt/AttributeMap.h"
#include "kolt/AttributeMapBuilder.h"
#include "kolt/StringUtils.h"
#include "koltx/LogFormatter.h"
#include "koltx/StatusException.h"

#include <algorithm>
#include <cmath>
#include <cwchar>
#include <string>
#include <utility>

namespace koltx {

namespace {

char const* typeName(kolt::PrimitiveType type) {
    switch (type) {
    case kolt::PT_STRING:
        return "string";
    case kolt::PT_FLOAT:
        return "float";
    case kolt::PT_BOOL:
        return "bool";
    case kolt::PT_INT:
        return "int";
    case kolt::PT_STRING_ARRAY:
        return "string array";
    case kolt::PT_FLOAT_ARRAY:
        return "float array";
    case kolt::PT_BOOL_ARRAY:
        return "bool array";
    case kolt::PT_INT_ARRAY:
        return "int array";
    case kolt::PT_BLIND_DATA:
        return "blind data";
    default:
        return "undefined";
    }
}

// A float option that is not a finite number means nothing to any encoder (a precision of NaN
// would pass every range check), so it never reaches one.
bool isFinite(kolt::AttributeMap const& from, wchar_t const* key, kolt::PrimitiveType type) {
    if (type == kolt::PT_FLOAT)
        return std::isfinite(from.getFloat(key));
    if (type != kolt::PT_FLOAT_ARRAY)
        return true;
    size_t count = 0;
    double const* values = from.getFloatArray(key, &count);
    return std::all_of(values, values + count, [](double v) { return std::isfinite(v); });
}

void copyValue(kolt::AttributeMap const& from, wchar_t const* key, kolt::PrimitiveType type,
               kolt::AttributeMapBuilder& to) {
    size_t count = 0;
    switch (type) {
    case kolt::PT_STRING:
        to.setString(key, from.getString(key));
        break;
    case kolt::PT_FLOAT:
        to.setFloat(key, from.getFloat(key));
        break;
    case kolt::PT_BOOL:
        to.setBool(key, from.getBool(key));
        break;
    case kolt::PT_INT:
        to.setInt(key, from.getInt(key));
        break;
    case kolt::PT_STRING_ARRAY: {
        auto const* values = from.getStringArray(key, &count);
        to.setStringArray(key, values, count);
        break;
    }
    case kolt::PT_FLOAT_ARRAY: {
        auto const* values = from.getFloatArray(key, &count);
        to.setFloatArray(key, values, count);
        break;
    }
    case kolt::PT_BOOL_ARRAY: {
        auto const* values = from.getBoolArray(key, &count);
        to.setBoolArray(key, values, count);
        break;
    }
    case kolt::PT_INT_ARRAY: {
        auto const* values = from.getIntArray(key, &count);
        to.setIntArray(key, values, count);
        break;
    }
    case kolt::PT_BLIND_DATA:
        to.setBlindData(key, from.getBlindData(key));
        break;
    default:
        break;
    }
}

kolt::EncoderInfo::OptionAnnotation makeView(EncoderInfoData::Annotation const& a) {
    kolt::EncoderInfo::OptionAnnotation view;
    view.key = a.key.c_str();
    view.label = a.hasLabel ? a.label.c_str() : nullptr;
    view.description = a.hasDescription ? a.description.c_str() : nullptr;
    view.group = a.hasGroup ? a.group.c_str() : nullptr;
    view.hasOrder = a.hasOrder;
    view.order = a.order;
    view.groupOrder = a.groupOrder;
    view.hidden = a.hidden;
    view.hasRange = a.hasRange;
    view.rangeMin = a.rangeMin;
    view.rangeMax = a.rangeMax;
    return view;
}

// Reports a failure through `status` and the log, or by exception when there is no status.
void fail(kolt::Status* status, kolt::Status code, std::string const& message) {
    if (status == nullptr)
        throw StatusException(code, message);
    *status = code;
    LogFormatter(kolt::LOG_ERROR, message.c_str(), nullptr);
}

} // namespace

EncoderInfoImpl::EncoderInfoImpl(EncoderInfoData data) : data(std::move(data)) {
    // Views into this object's own strings, so they live exactly as long as it does.
    annotations.reserve(this->data.annotations.size());
    for (auto const& annotation : this->data.annotations)
        annotations.push_back(makeView(annotation));
}

EncoderInfoImpl::~EncoderInfoImpl() = default;

kolt::EncoderInfo::OptionAnnotation const* EncoderInfoImpl::getAnnotation(size_t index) const {
    return index < annotations.size() ? &annotations[index] : nullptr;
}

kolt::EncoderInfo::OptionAnnotation const*
EncoderInfoImpl::findAnnotation(wchar_t const* key) const {
    if (key == nullptr)
        return nullptr;
    for (auto const& annotation : annotations)
        if (std::wcscmp(annotation.key, key) == 0)
            return &annotation;
    return nullptr;
}

void EncoderInfoImpl::createValidatedOptions(kolt::AttributeMap const* options,
                                             kolt::AttributeMap const** validated,
                                             kolt::Status* status) const {
    if (validated != nullptr)
        *validated = nullptr;
    if (validated == nullptr) {
        fail(status, kolt::STATUS_ILLEGAL_VALUE, "createValidatedOptions: no place for the result");
        return;
    }
    auto const id = kolt::StringUtils::toUTF8(data.id);
    KOLTUtils::AttributeMapBuilderPtr merged(
        kolt::AttributeMapBuilder::createFromAttributeMap(data.defaultOptions.get()));

    if (options != nullptr && data.defaultOptions) {
        size_t count = 0;
        wchar_t const* const* keys = options->getKeys(&count);
        for (size_t i = 0; i < count; ++i) {
            kolt::Status found = kolt::STATUS_OK;
            kolt::PrimitiveType const expected = data.defaultOptions->getType(keys[i], &found);
            if (found != kolt::STATUS_OK)
                continue; // not an option of this encoder
            kolt::PrimitiveType const given = options->getType(keys[i]);
            if (given != expected) {
                fail(status, kolt::STATUS_KEY_TYPE_MISMATCH,
                     "Encoder '" + id + "': option '" + kolt::StringUtils::toUTF8(keys[i]) +
                         "' is " + typeName(given) + ", expected " + typeName(expected));
                return;
            }
            if (!isFinite(*options, keys[i], given)) {
                fail(status, kolt::STATUS_ILLEGAL_VALUE,
                     "Encoder '" + id + "': option '" + kolt::StringUtils::toUTF8(keys[i]) +
                         "' is not a finite number");
                return;
            }
            copyValue(*options, keys[i], given, *merged);
        }
    }

    if (data.validator) {
        try {
            KOLTUtils::AttributeMapPtr const values(merged->createAttributeMap());
            data.validator->validate(values, merged);
        } catch (StatusException const& e) {
            fail(status, e.getStatus(), "Encoder '" + id + "': validator: " + e.what());
            return;
        } catch (std::exception const& e) {
            fail(status, kolt::STATUS_UNSPECIFIED_ERROR,
                 "Encoder '" + id + "': validator: " + e.what());
            return;
        }
    }
    *validated = merged->createAttributeMap();
    if (status != nullptr)
        *status = kolt::STATUS_OK;
}

} // namespace koltx
