#include "koltx/GeometryEncoder.h"

namespace koltx {

GeometryEncoder::GeometryEncoder(std::wstring const& id, kolt::AttributeMap const* options,
                                 kolt::Callbacks* callbacks)
    : Encoder(id, options, callbacks) {}

GeometryEncoder::~GeometryEncoder() = default;

} // namespace koltx
