#pragma once

#include "kolt/Cache.h"
#include "koltx/ResolveMap.h"
#include "koltx/Texture.h"

#include <memory>
#include <string>

namespace koltx {

// Loading of content from where a resolve map says it is.
class DataBackend {
public:
    // Resolves `key` through `resolveMap` (may be null), reads the image (PNG or JPEG, told by
    // its content) and keeps it in `cache` (may be null) by URI. A file that is missing or cannot
    // be read gives null and appends one line naming the file to `warnings` (may be null).
    static std::shared_ptr<Texture> resolveTexture(kolt::Cache* cache, std::wstring const& key,
                                                   ResolveMap const* resolveMap,
                                                   std::wstring* warnings);
};

} // namespace koltx
