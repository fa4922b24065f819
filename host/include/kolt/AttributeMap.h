#pragma once

#include "kolt/Object.h"
#include "kolt/Status.h"

#include <cstddef>
#include <cstdint>
#include <memory>

namespace kolt {

class AttributeMapBuilder;
class AttributeStore;

// Type codes of attribute values.
enum PrimitiveType : int32_t {
    PT_UNDEFINED = 0,
    PT_STRING = 1,
    PT_FLOAT = 2,
    PT_BOOL = 3,
    PT_INT = 4,
    PT_STRING_ARRAY = 5,
    PT_FLOAT_ARRAY = 6,
    PT_BOOL_ARRAY = 7,
    PT_INT_ARRAY = 8,
    PT_BLIND_DATA = 9,
};

// An immutable map from keys to typed values. Made by AttributeMapBuilder, released with
// destroy(). Every getter takes an optional status: STATUS_OK on success, STATUS_ILLEGAL_KEY for a
// null key, STATUS_KEY_NOT_FOUND, or STATUS_KEY_TYPE_MISMATCH. A failed getter returns a zero
// value (false, 0, null, count 0). Returned pointers live as long as the map.
class AttributeMap : public Object {
public:
    // The keys in ascending order of their code units; `count` receives their number.
    wchar_t const* const* getKeys(size_t* count, Status* status = nullptr) const;
    size_t getKeyCount() const;
    bool hasKey(wchar_t const* key, Status* status = nullptr) const;
    PrimitiveType getType(wchar_t const* key, Status* status = nullptr) const;

    bool getBool(wchar_t const* key, Status* status = nullptr) const;
    int32_t getInt(wchar_t const* key, Status* status = nullptr) const;
    double getFloat(wchar_t const* key, Status* status = nullptr) const;
    wchar_t const* getString(wchar_t const* key, Status* status = nullptr) const;
    void* getBlindData(wchar_t const* key, Status* status = nullptr) const;

    wchar_t const* const* getStringArray(wchar_t const* key, size_t* count,
                                         Status* status = nullptr) const;
    double const* getFloatArray(wchar_t const* key, size_t* count, Status* status = nullptr) const;
    bool const* getBoolArray(wchar_t const* key, size_t* count, Status* status = nullptr) const;
    int32_t const* getIntArray(wchar_t const* key, size_t* count, Status* status = nullptr) const;

    // Same keys, types and values (blind data by pointer).
    bool equals(AttributeMap const& other) const;

protected:
    ~AttributeMap() override;

private:
    friend class AttributeMapBuilder;
    explicit AttributeMap(std::unique_ptr<AttributeStore> store);

    std::unique_ptr<AttributeStore> store;
};

} // namespace kolt
