#pragma once

#include "koltx/Comparable.h"
#include "koltx/Texture.h"

#include <memory>
#include <string>
#include <vector>

namespace koltx {

class MaterialBuilder;

// Surface appearance of mesh faces. Immutable; made by MaterialBuilder.
class Material : public Comparable {
public:
    Material(Material const&) = delete;
    Material& operator=(Material const&) = delete;
    ~Material() override;

    std::wstring const& getName() const { return name; }
    std::vector<double> const& getAmbientColor() const { return ambientColor; }
    std::vector<double> const& getDiffuseColor() const { return diffuseColor; }
    std::vector<double> const& getEmissiveColor() const { return emissiveColor; }
    std::vector<double> const& getSpecularColor() const { return specularColor; }
    double getShininess() const { return shininess; }
    double getOpacity() const { return opacity; }
    // The diffuse textures; entries may be null.
    std::vector<std::shared_ptr<Texture>> const& getDiffuseMap() const { return diffuseMap; }
    // The keys under which the diffuse textures were found, one per texture.
    std::vector<std::wstring> const& getDiffuseMapKeys() const { return diffuseMapKeys; }
    // The first texture that is not null and valid, or null.
    std::shared_ptr<Texture> getFirstValidTexture() const;

    // Every field equal, textures by content (null only equals null).
    bool equals(Comparable const& other) const override;
    size_t hash() const override;
    bool operator==(Material const& other) const { return equals(other); }
    bool operator!=(Material const& other) const { return !equals(other); }

private:
    friend class MaterialBuilder;
    Material() = default;

    std::wstring name;
    std::vector<double> ambientColor;
    std::vector<double> diffuseColor;
    std::vector<double> emissiveColor;
    std::vector<double> specularColor;
    double shininess = 0.0;
    double opacity = 1.0;
    std::vector<std::shared_ptr<Texture>> diffuseMap;
    std::vector<std::wstring> diffuseMapKeys;
};

using MaterialPtr = std::shared_ptr<Material>;

} // namespace koltx
