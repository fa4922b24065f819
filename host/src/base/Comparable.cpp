#include "koltx/Comparable.h"

namespace koltx {

Comparable::~Comparable() = default;

} // namespace koltx
