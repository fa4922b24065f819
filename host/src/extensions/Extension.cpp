#include "koltx/Extension.h"

namespace koltx {

Extension::~Extension() = default;

} // namespace koltx
