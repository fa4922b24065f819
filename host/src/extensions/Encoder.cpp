#include "koltx/Encoder.h"

#include "koltx/StatusException.h"

namespace koltx {

Encoder::Encoder(std::wstring const& id, kolt::AttributeMap const* options,
                 kolt::Callbacks* callbacks)
    : id(id), options(options), callbacks(callbacks) {}

Encoder::~Encoder() = default;

void Encoder::init(GenerateContext& /*context*/) {}

void Encoder::validate(GenerateContext& /*context*/, size_t /*initialShapeIndex*/) {}

void Encoder::encode(std::vector<std::shared_ptr<Content>> const& /*contents*/) {
    throw StatusException(kolt::STATUS_NOT_SUPPORTED);
}

void Encoder::encode(GenerateContext& /*context*/, size_t /*initialShapeIndex*/) {
    throw StatusException(kolt::STATUS_NOT_SUPPORTED);
}

void Encoder::finish(GenerateContext& /*context*/) {}

} // namespace koltx
