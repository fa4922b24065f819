#include "FuzzCodec.h"

#include "FuzzCheck.h"

#include <kolt/Cache.h>
#include <koltx/Content.h>
#include <koltx/ExtensionManager.h>
#include <koltx/Geometry.h>
#include <koltx/Mesh.h>

#include <cmath>
#include <filesystem>
#include <sstream>
#include <vector>

namespace {

wchar_t const* const decoderId = L"com.morvane.kolt.codecs.CityGMLDecoder";

void checkMesh(koltx::Mesh const& mesh) {
    for (double c : mesh.getVertexCoords())
        fuzzCheck(std::isfinite(c));
    for (uint32_t f = 0; f < mesh.getFaceCount(); ++f) {
        fuzzCheck(mesh.getFaceVertexCount(f) >= 3);
        for (uint32_t i = 0; i < mesh.getFaceVertexCount(f); ++i)
            fuzzCheck(mesh.getFaceVertexIndices(f)[i] < mesh.getVertexCount());
    }
}

} // namespace

koltx::ExtensionManager& FuzzCodec::manager() {
    static koltx::ExtensionManager* const loaded = [] {
        auto* manager = koltx::ExtensionManager::instance();
        auto const self = std::filesystem::read_symlink("/proc/self/exe");
        manager->loadExtensionLibrary((self.parent_path() / "libcitygml_codec.so").string());
        return manager;
    }();
    return *loaded;
}

std::shared_ptr<koltx::Geometry> FuzzCodec::decode(std::string const& bytes, kolt::Cache* cache,
                                                   std::wstring& warnings) {
    auto const decoder = manager().createDecoder(decoderId);
    std::istringstream stream(bytes);
    std::vector<std::shared_ptr<koltx::Content>> results;
    decoder->decode(results, stream, cache, L"/nonexistent-fuzz-folder/input.gml", nullptr,
                    warnings);
    std::shared_ptr<koltx::Geometry> geometry;
    for (auto const& content : results) {
        auto decoded = std::dynamic_pointer_cast<koltx::Geometry>(content);
        fuzzCheck(decoded != nullptr);
        for (auto const& mesh : decoded->getMeshes())
            checkMesh(*mesh);
        if (!geometry)
            geometry = decoded;
    }
    return geometry;
}
