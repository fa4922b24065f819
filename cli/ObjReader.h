#pragma once

#include <memory>
#include <string>
#include <vector>

namespace kolt {
class Cache;
}
namespace koltx {
class Geometry;
class Mesh;
} // namespace koltx

// Reads a Wavefront OBJ file (with its .mtl) into host meshes: one mesh per object or group,
// named after it, in the file's order. Texture images are loaded through the host.
class ObjReader {
public:
    // Throws std::runtime_error naming the file when it cannot be read. Problems that are
    // survived (a missing texture, a material library that is not there) go to `warnings`.
    static std::vector<std::shared_ptr<koltx::Mesh>>
    read(std::string const& path, kolt::Cache* cache, std::wstring& warnings);
};
