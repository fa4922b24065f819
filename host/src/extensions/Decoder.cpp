#include "koltx/Decoder.h"

namespace koltx {

Decoder::~Decoder() = default;

} // namespace koltx
