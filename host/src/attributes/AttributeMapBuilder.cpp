#include "kolt/AttributeMapBuilder.h"

#include "AttributeStore.h"

#include <algorithm>
#include <new>

namespace kolt {

namespace {

bool checkArray(void const* values, size_t count, Status* status) {
    if (values == nullptr && count > 0) {
        if (status != nullptr)
            *status = STATUS_ILLEGAL_VALUE;
        return false;
    }
    return true;
}

} // namespace

AttributeMapBuilder::AttributeMapBuilder() : store(std::make_unique<AttributeStore>()) {}

AttributeMapBuilder::~AttributeMapBuilder() = default;

AttributeMapBuilder* AttributeMapBuilder::create(Status* status) {
    auto* builder = new (std::nothrow) AttributeMapBuilder();
    if (status != nullptr)
        *status = builder != nullptr ? STATUS_OK : STATUS_UNSPECIFIED_ERROR;
    return builder;
}

AttributeMapBuilder* AttributeMapBuilder::createFromAttributeMap(AttributeMap const* map,
                                                                 Status* status) {
    auto* builder = create(status);
    if (builder != nullptr && map != nullptr)
        builder->setAll(map, status);
    return builder;
}

void AttributeMapBuilder::setBool(wchar_t const* key, bool value, Status* status) {
    if (auto* entry = store->put(key, PT_BOOL, status))
        entry->boolValue = value;
}

void AttributeMapBuilder::setInt(wchar_t const* key, int32_t value, Status* status) {
    if (auto* entry = store->put(key, PT_INT, status))
        entry->intValue = value;
}

void AttributeMapBuilder::setFloat(wchar_t const* key, double value, Status* status) {
    if (auto* entry = store->put(key, PT_FLOAT, status))
        entry->floatValue = value;
}

void AttributeMapBuilder::setString(wchar_t const* key, wchar_t const* value, Status* status) {
    if (value == nullptr) {
        if (status != nullptr)
            *status = key == nullptr ? STATUS_ILLEGAL_KEY : STATUS_ILLEGAL_VALUE;
        return;
    }
    if (auto* entry = store->put(key, PT_STRING, status))
        entry->stringValue = value;
}

void AttributeMapBuilder::setBlindData(wchar_t const* key, void* value, Status* status) {
    if (auto* entry = store->put(key, PT_BLIND_DATA, status))
        entry->blindData = value;
}

void AttributeMapBuilder::setStringArray(wchar_t const* key, wchar_t const* const* values,
                                         size_t count, Status* status) {
    if (!checkArray(values, count, status))
        return;
    for (size_t i = 0; i < count; ++i) {
        if (values[i] == nullptr) {
            if (status != nullptr)
                *status = STATUS_ILLEGAL_VALUE;
            return;
        }
    }
    if (auto* entry = store->put(key, PT_STRING_ARRAY, status)) {
        entry->strings.assign(values, values + count);
        entry->pointStrings();
    }
}

void AttributeMapBuilder::setFloatArray(wchar_t const* key, double const* values, size_t count,
                                        Status* status) {
    if (!checkArray(values, count, status))
        return;
    if (auto* entry = store->put(key, PT_FLOAT_ARRAY, status))
        entry->floats.assign(values, values + count);
}

void AttributeMapBuilder::setBoolArray(wchar_t const* key, bool const* values, size_t count,
                                       Status* status) {
    if (!checkArray(values, count, status))
        return;
    if (auto* entry = store->put(key, PT_BOOL_ARRAY, status)) {
        // Never null, so that an empty array still reads as present.
        entry->bools.reset(new bool[count > 0 ? count : 1]);
        std::copy(values, values + count, entry->bools.get());
        entry->boolCount = count;
    }
}

void AttributeMapBuilder::setIntArray(wchar_t const* key, int32_t const* values, size_t count,
                                      Status* status) {
    if (!checkArray(values, count, status))
        return;
    if (auto* entry = store->put(key, PT_INT_ARRAY, status))
        entry->ints.assign(values, values + count);
}

void AttributeMapBuilder::setAll(AttributeMap const* map, Status* status) {
    if (map == nullptr) {
        if (status != nullptr)
            *status = STATUS_ILLEGAL_VALUE;
        return;
    }
    store->merge(*map->store);
    if (status != nullptr)
        *status = STATUS_OK;
}

bool AttributeMapBuilder::hasKey(wchar_t const* key) const {
    return store->find(key, PT_UNDEFINED, nullptr) != nullptr;
}

void AttributeMapBuilder::remove(wchar_t const* key) {
    store->remove(key);
}

void AttributeMapBuilder::clear() {
    store->clear();
}

AttributeMap const* AttributeMapBuilder::createAttributeMap(Status* status) const {
    auto* map = new (std::nothrow) AttributeMap(std::make_unique<AttributeStore>(*store));
    if (status != nullptr)
        *status = map != nullptr ? STATUS_OK : STATUS_UNSPECIFIED_ERROR;
    return map;
}

AttributeMap const* AttributeMapBuilder::createAttributeMapAndReset(Status* status) {
    auto taken = std::move(store);
    store = std::make_unique<AttributeStore>();
    auto* map = new (std::nothrow) AttributeMap(std::move(taken));
    if (status != nullptr)
        *status = map != nullptr ? STATUS_OK : STATUS_UNSPECIFIED_ERROR;
    return map;
}

} // namespace kolt
