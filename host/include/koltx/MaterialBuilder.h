#pragma once

#include "koltx/Material.h"

#include <memory>
#include <string>
#include <vector>

namespace koltx {

// Collects the fields of a material. Defaults: name "default", ambient (0, 0, 0), diffuse
// (1, 1, 1), emissive (0, 0, 0), specular (0, 0, 0), shininess 0, opacity 1, no textures.
class MaterialBuilder {
public:
    MaterialBuilder();
    // Starts from the values of `material`.
    explicit MaterialBuilder(Material const& material);
    MaterialBuilder(MaterialBuilder const&) = delete;
    MaterialBuilder& operator=(MaterialBuilder const&) = delete;
    virtual ~MaterialBuilder();

    MaterialBuilder& name(std::wstring const& value);
    MaterialBuilder& shininess(double value);
    MaterialBuilder& opacity(double value);
    MaterialBuilder& ambientColor(std::vector<double> const& rgb);
    MaterialBuilder& diffuseColor(std::vector<double> const& rgb);
    MaterialBuilder& emissiveColor(std::vector<double> const& rgb);
    MaterialBuilder& specularColor(std::vector<double> const& rgb);
    // One key per texture.
    MaterialBuilder& diffuseMap(std::vector<std::shared_ptr<Texture>> const& textures,
                                std::vector<std::wstring> const& keys);

    // Makes the material and returns the builder to its defaults. Values that cannot stand are
    // corrected, each with one line in `warnings` (may be null): a colour without three entries
    // keeps its default, opacity is clamped to [0, 1], a negative shininess becomes 0, missing
    // texture keys become empty.
    std::shared_ptr<Material> createSharedAndReset(std::wstring* warnings);

private:
    void reset();
    MaterialBuilder& setColour(std::vector<double>& field, std::vector<double> const& rgb,
                               wchar_t const* label);

    std::unique_ptr<Material> material;
    std::wstring problems;
};

} // namespace koltx
