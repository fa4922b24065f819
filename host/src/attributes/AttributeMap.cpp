#include "kolt/AttributeMap.h"

#include "AttributeStore.h"

namespace kolt {

AttributeMap::AttributeMap(std::unique_ptr<AttributeStore> store) : store(std::move(store)) {
    this->store->indexKeys();
}

AttributeMap::~AttributeMap() = default;

wchar_t const* const* AttributeMap::getKeys(size_t* count, Status* status) const {
    if (status != nullptr)
        *status = STATUS_OK;
    return store->keys(count);
}

size_t AttributeMap::getKeyCount() const {
    return store->size();
}

bool AttributeMap::hasKey(wchar_t const* key, Status* status) const {
    Status found = STATUS_OK;
    bool const result = store->find(key, PT_UNDEFINED, &found) != nullptr;
    if (status != nullptr)
        *status = found == STATUS_KEY_NOT_FOUND ? STATUS_OK : found;
    return result;
}

PrimitiveType AttributeMap::getType(wchar_t const* key, Status* status) const {
    auto const* value = store->find(key, PT_UNDEFINED, status);
    return value != nullptr ? value->type : PT_UNDEFINED;
}

bool AttributeMap::getBool(wchar_t const* key, Status* status) const {
    auto const* value = store->find(key, PT_BOOL, status);
    return value != nullptr && value->boolValue;
}

int32_t AttributeMap::getInt(wchar_t const* key, Status* status) const {
    auto const* value = store->find(key, PT_INT, status);
    return value != nullptr ? value->intValue : 0;
}

double AttributeMap::getFloat(wchar_t const* key, Status* status) const {
    auto const* value = store->find(key, PT_FLOAT, status);
    return value != nullptr ? value->floatValue : 0.0;
}

wchar_t const* AttributeMap::getString(wchar_t const* key, Status* status) const {
    auto const* value = store->find(key, PT_STRING, status);
    return value != nullptr ? value->stringValue.c_str() : nullptr;
}

void* AttributeMap::getBlindData(wchar_t const* key, Status* status) const {
    auto const* value = store->find(key, PT_BLIND_DATA, status);
    return value != nullptr ? value->blindData : nullptr;
}

namespace {

template <typename T> T const* arrayResult(T const* data, size_t size, size_t* count) {
    if (count != nullptr)
        *count = data != nullptr ? size : 0;
    return data;
}

} // namespace

wchar_t const* const* AttributeMap::getStringArray(wchar_t const* key, size_t* count,
                                                   Status* status) const {
    auto const* value = store->find(key, PT_STRING_ARRAY, status);
    return value != nullptr
               ? arrayResult(value->stringPointers.data(), value->stringPointers.size(), count)
               : arrayResult<wchar_t const*>(nullptr, 0, count);
}

double const* AttributeMap::getFloatArray(wchar_t const* key, size_t* count, Status* status) const {
    auto const* value = store->find(key, PT_FLOAT_ARRAY, status);
    return value != nullptr ? arrayResult(value->floats.data(), value->floats.size(), count)
                            : arrayResult<double>(nullptr, 0, count);
}

bool const* AttributeMap::getBoolArray(wchar_t const* key, size_t* count, Status* status) const {
    auto const* value = store->find(key, PT_BOOL_ARRAY, status);
    return value != nullptr ? arrayResult(value->bools.get(), value->boolCount, count)
                            : arrayResult<bool>(nullptr, 0, count);
}

int32_t const* AttributeMap::getIntArray(wchar_t const* key, size_t* count, Status* status) const {
    auto const* value = store->find(key, PT_INT_ARRAY, status);
    return value != nullptr ? arrayResult(value->ints.data(), value->ints.size(), count)
                            : arrayResult<int32_t>(nullptr, 0, count);
}

bool AttributeMap::equals(AttributeMap const& other) const {
    return store->equals(*other.store);
}

} // namespace kolt
