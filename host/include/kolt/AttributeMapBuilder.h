#pragma once

#include "kolt/AttributeMap.h"
#include "kolt/Object.h"
#include "kolt/Status.h"

#include <cstddef>
#include <cstdint>
#include <memory>

namespace kolt {

class AttributeStore;

// Collects values and makes AttributeMap objects. Setting a key again replaces its value and type.
// Setters report STATUS_ILLEGAL_KEY for a null key and STATUS_ILLEGAL_VALUE for a null array with
// a non-zero count or a null string.
class AttributeMapBuilder : public Object {
public:
    static AttributeMapBuilder* create(Status* status = nullptr);
    // A builder that starts with all values of `map` (may be null).
    static AttributeMapBuilder* createFromAttributeMap(AttributeMap const* map,
                                                       Status* status = nullptr);

    void setBool(wchar_t const* key, bool value, Status* status = nullptr);
    void setInt(wchar_t const* key, int32_t value, Status* status = nullptr);
    void setFloat(wchar_t const* key, double value, Status* status = nullptr);
    void setString(wchar_t const* key, wchar_t const* value, Status* status = nullptr);
    void setBlindData(wchar_t const* key, void* value, Status* status = nullptr);
    void setStringArray(wchar_t const* key, wchar_t const* const* values, size_t count,
                        Status* status = nullptr);
    void setFloatArray(wchar_t const* key, double const* values, size_t count,
                       Status* status = nullptr);
    void setBoolArray(wchar_t const* key, bool const* values, size_t count,
                      Status* status = nullptr);
    void setIntArray(wchar_t const* key, int32_t const* values, size_t count,
                     Status* status = nullptr);

    // Copies every value of `map` in, replacing values of the same keys.
    void setAll(AttributeMap const* map, Status* status = nullptr);
    bool hasKey(wchar_t const* key) const;
    void remove(wchar_t const* key);
    void clear();

    // A new map with the current values; the builder keeps them.
    AttributeMap const* createAttributeMap(Status* status = nullptr) const;
    // A new map with the current values; the builder is empty afterwards.
    AttributeMap const* createAttributeMapAndReset(Status* status = nullptr);

protected:
    ~AttributeMapBuilder() override;

private:
    AttributeMapBuilder();

    std::unique_ptr<AttributeStore> store;
};

} // namespace kolt
