#pragma once

#include "kolt/AttributeMap.h"
#include "kolt/Status.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace kolt {

// The values behind AttributeMap and AttributeMapBuilder.
class AttributeStore {
public:
    struct Value {
        PrimitiveType type = PT_UNDEFINED;
        bool boolValue = false;
        int32_t intValue = 0;
        double floatValue = 0.0;
        void* blindData = nullptr;
        std::wstring stringValue;
        std::vector<std::wstring> strings;
        std::vector<wchar_t const*> stringPointers;
        std::vector<double> floats;
        std::unique_ptr<bool[]> bools;
        size_t boolCount = 0;
        std::vector<int32_t> ints;

        Value() = default;
        Value(Value const& other);
        Value& operator=(Value const& other);
        bool equals(Value const& other) const;
        void pointStrings();
    };

    AttributeStore() = default;
    AttributeStore(AttributeStore const& other);

    // Null with STATUS_ILLEGAL_KEY or STATUS_KEY_NOT_FOUND or, when `type` is not PT_UNDEFINED
    // and differs, STATUS_KEY_TYPE_MISMATCH.
    Value const* find(wchar_t const* key, PrimitiveType type, Status* status) const;
    // Null with STATUS_ILLEGAL_KEY for a null key; the value is reset to `type`.
    Value* put(wchar_t const* key, PrimitiveType type, Status* status);
    void remove(wchar_t const* key);
    void clear();
    void merge(AttributeStore const& other);
    bool equals(AttributeStore const& other) const;

    // Makes the key list that keys() gives; called once a store stops changing.
    void indexKeys();
    wchar_t const* const* keys(size_t* count) const;
    size_t size() const { return values.size(); }

private:
    std::map<std::wstring, Value> values;
    std::vector<wchar_t const*> keyPointers;
};

} // namespace kolt
