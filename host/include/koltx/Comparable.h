#pragma once

#include <cstddef>

namespace koltx {

// Value comparison of host objects, independent of their addresses.
class Comparable {
public:
    virtual ~Comparable();
    // True if `other` is of the same kind and holds the same values.
    virtual bool equals(Comparable const& other) const = 0;
    virtual size_t hash() const = 0;
};

} // namespace koltx
