#pragma once

#include "koltx/Encoder.h"

namespace koltx {

class GeometryEncoder : public Encoder {
public:
    GeometryEncoder(std::wstring const& id, kolt::AttributeMap const* options,
                    kolt::Callbacks* callbacks);
    ~GeometryEncoder() override;

    kolt::ContentType getContentType() const override { return kolt::CT_GEOMETRY; }
};

} // namespace koltx
