#include "AttributeStore.h"

#include <algorithm>

namespace kolt {

namespace {

void setStatus(Status* status, Status value) {
    if (status != nullptr)
        *status = value;
}

} // namespace

AttributeStore::Value::Value(Value const& other) {
    *this = other;
}

AttributeStore::Value& AttributeStore::Value::operator=(Value const& other) {
    if (this == &other)
        return *this;
    type = other.type;
    boolValue = other.boolValue;
    intValue = other.intValue;
    floatValue = other.floatValue;
    blindData = other.blindData;
    stringValue = other.stringValue;
    strings = other.strings;
    floats = other.floats;
    boolCount = other.boolCount;
    bools.reset();
    if (other.bools) {
        bools.reset(new bool[boolCount > 0 ? boolCount : 1]);
        std::copy(other.bools.get(), other.bools.get() + boolCount, bools.get());
    }
    ints = other.ints;
    pointStrings();
    return *this;
}

void AttributeStore::Value::pointStrings() {
    stringPointers.clear();
    for (auto const& text : strings)
        stringPointers.push_back(text.c_str());
}

bool AttributeStore::Value::equals(Value const& other) const {
    if (type != other.type)
        return false;
    switch (type) {
    case PT_STRING:
        return stringValue == other.stringValue;
    case PT_FLOAT:
        return floatValue == other.floatValue;
    case PT_BOOL:
        return boolValue == other.boolValue;
    case PT_INT:
        return intValue == other.intValue;
    case PT_STRING_ARRAY:
        return strings == other.strings;
    case PT_FLOAT_ARRAY:
        return floats == other.floats;
    case PT_BOOL_ARRAY:
        return boolCount == other.boolCount &&
               std::equal(bools.get(), bools.get() + boolCount, other.bools.get());
    case PT_INT_ARRAY:
        return ints == other.ints;
    case PT_BLIND_DATA:
        return blindData == other.blindData;
    default:
        return true;
    }
}

AttributeStore::AttributeStore(AttributeStore const& other) : values(other.values) {}

AttributeStore::Value const* AttributeStore::find(wchar_t const* key, PrimitiveType type,
                                                  Status* status) const {
    if (key == nullptr) {
        setStatus(status, STATUS_ILLEGAL_KEY);
        return nullptr;
    }
    auto const it = values.find(key);
    if (it == values.end()) {
        setStatus(status, STATUS_KEY_NOT_FOUND);
        return nullptr;
    }
    if (type != PT_UNDEFINED && it->second.type != type) {
        setStatus(status, STATUS_KEY_TYPE_MISMATCH);
        return nullptr;
    }
    setStatus(status, STATUS_OK);
    return &it->second;
}

AttributeStore::Value* AttributeStore::put(wchar_t const* key, PrimitiveType type, Status* status) {
    if (key == nullptr) {
        setStatus(status, STATUS_ILLEGAL_KEY);
        return nullptr;
    }
    Value& value = values[key];
    value = Value();
    value.type = type;
    setStatus(status, STATUS_OK);
    return &value;
}

void AttributeStore::remove(wchar_t const* key) {
    if (key != nullptr)
        values.erase(key);
}

void AttributeStore::clear() {
    values.clear();
}

void AttributeStore::merge(AttributeStore const& other) {
    for (auto const& [key, value] : other.values)
        values[key] = value;
}

bool AttributeStore::equals(AttributeStore const& other) const {
    if (values.size() != other.values.size())
        return false;
    auto it = other.values.begin();
    for (auto const& [key, value] : values) {
        if (key != it->first || !value.equals(it->second))
            return false;
        ++it;
    }
    return true;
}

void AttributeStore::indexKeys() {
    keyPointers.clear();
    for (auto const& entry : values)
        keyPointers.push_back(entry.first.c_str());
}

wchar_t const* const* AttributeStore::keys(size_t* count) const {
    if (count != nullptr)
        *count = keyPointers.size();
    return keyPointers.data();
}

} // namespace kolt
