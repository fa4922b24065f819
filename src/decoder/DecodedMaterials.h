#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>

namespace citygml {
class Material;
class Polygon;
class Texture;
} // namespace citygml
namespace koltx {
class Material;
class MeshBuilder;
class ResolveMap;
class Texture;
} // namespace koltx

// The materials of decoded polygons. One host material per appearance ID and one texture load
// per anchored key live as long as the decoder; per mesh, one addMaterial per appearance.
class DecodedMaterials {
public:
    // Loads the texture of an anchored key; may give null and may throw.
    using TextureResolver =
        std::function<std::shared_ptr<koltx::Texture>(std::wstring const&, std::wstring*)>;
    // Appearance key to material index in the mesh being built.
    using MaterialIndices = std::map<std::wstring, uint32_t>;

    // Key of polygons without any appearance; never an ID of the document.
    static std::wstring const DefaultMaterialKey;

    explicit DecodedMaterials(TextureResolver resolver);

    // Texture URLs are taken relative to the file of `key`.
    void setFile(std::wstring const& key, koltx::ResolveMap const* resolveMap);

    // The index of the polygon's material in the mesh, adding the material on first use.
    uint32_t getMaterialIndex(koltx::MeshBuilder& meshBuilder, MaterialIndices& materialIndices,
                              citygml::Polygon const& polygon, std::wstring& warnings);

    std::shared_ptr<koltx::Material> const& getDefaultMaterial() const { return defaultMaterial; }

private:
    uint32_t indexFor(koltx::MeshBuilder& meshBuilder, MaterialIndices& materialIndices,
                      std::wstring const& key,
                      std::function<std::shared_ptr<koltx::Material>()> const& make);
    std::shared_ptr<koltx::Material> makeTextureMaterial(citygml::Texture const* texture,
                                                         std::wstring& warnings);
    std::shared_ptr<koltx::Material> makeX3DMaterial(citygml::Material const* material);
    std::shared_ptr<koltx::Texture> resolveTextureCached(std::wstring const& key,
                                                         std::wstring& warnings);

    std::map<std::wstring, std::shared_ptr<koltx::Texture>> textureCache;
    std::map<std::wstring, std::shared_ptr<koltx::Material>> materialCache;
    std::shared_ptr<koltx::Material> defaultMaterial;
    TextureResolver resolver;
    std::wstring fileKey;
    koltx::ResolveMap const* resolveMap = nullptr;
};
