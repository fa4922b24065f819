#pragma once

#include <memory>
#include <string>

namespace kolt {
class Cache;
}
namespace koltx {
class ExtensionManager;
class Geometry;
} // namespace koltx

// The codec as a fuzz target meets it: loaded once per process through the host's extension
// manager from the program's own folder, exactly as a host application loads it.
class FuzzCodec {
public:
    static koltx::ExtensionManager& manager();
    // Decodes `bytes` as a CityGML file in a folder that does not exist, so that no texture is
    // found by accident. Null when the document holds no geometry. Aborts when a decoded mesh
    // breaks the host's rules (indices out of range, coordinates that are not finite).
    static std::shared_ptr<koltx::Geometry> decode(std::string const& bytes, kolt::Cache* cache,
                                                   std::wstring& warnings);
};
