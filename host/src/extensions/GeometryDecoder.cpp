#include "koltx/GeometryDecoder.h"

namespace koltx {

GeometryDecoder::~GeometryDecoder() = default;

} // namespace koltx
