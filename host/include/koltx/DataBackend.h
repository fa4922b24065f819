#pragma once

#include "kolt/Cache.h"
#include "koltx/ResolveMap.h"
#include "koltx/Texture.h"

#include <functional>
#include <memory>
#include <string>

namespace koltx {

// Loading of content from where a resolve map says it is.
class DataBackend {
public:
    // Decides whether a texture file may be read: returns an empty string to allow it, otherwise
    // the reason it is refused. It is given the file's path with links resolved.
    using TextureFilter = std::function<std::string(std::string const& canonicalPath)>;

    // Process-wide, for the application to set before it decodes; an empty filter allows all.
    static void setTextureFilter(TextureFilter filter);

    // Resolves `key` through `resolveMap` (may be null), reads the image (PNG or JPEG, told by
    // its content) and keeps it in `cache` (may be null) by URI. A file that is missing or cannot
    // be read, or that the texture filter refuses, gives null and appends one line naming the
    // file to `warnings` (may be null).
    static std::shared_ptr<Texture> resolveTexture(kolt::Cache* cache, std::wstring const& key,
                                                   ResolveMap const* resolveMap,
                                                   std::wstring* warnings);
};

} // namespace koltx
