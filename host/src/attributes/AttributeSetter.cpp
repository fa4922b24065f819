#include "koltx/AttributeSetter.h"

namespace koltx {

AttributeSetter::~AttributeSetter() = default;

} // namespace koltx
