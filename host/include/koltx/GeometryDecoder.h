#pragma once

#include "kolt/Cache.h"
#include "koltx/Content.h"
#include "koltx/Decoder.h"
#include "koltx/ResolveMap.h"

#include <istream>
#include <memory>
#include <string>
#include <vector>

namespace koltx {

class GeometryDecoder : public Decoder {
public:
    ~GeometryDecoder() override;
    kolt::ContentType getContentType() const override { return kolt::CT_GEOMETRY; }

    // Reads `stream` (the content of `key` in `resolveMap`) and appends what it holds to
    // `results`. Problems that the decoder survives are appended to `warnings`.
    virtual void decode(std::vector<std::shared_ptr<Content>>& results, std::istream& stream,
                        kolt::Cache* cache, std::wstring const& key, ResolveMap const* resolveMap,
                        std::wstring& warnings) = 0;
};

} // namespace koltx
