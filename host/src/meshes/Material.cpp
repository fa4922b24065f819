#include "koltx/Material.h"

#include <functional>

namespace koltx {

Material::~Material() = default;

std::shared_ptr<Texture> Material::getFirstValidTexture() const {
    for (auto const& texture : diffuseMap)
        if (texture && texture->isValid())
            return texture;
    return nullptr;
}

bool Material::equals(Comparable const& other) const {
    auto const* material = dynamic_cast<Material const*>(&other);
    if (material == nullptr)
        return false;
    if (material == this)
        return true;
    if (name != material->name || ambientColor != material->ambientColor ||
        diffuseColor != material->diffuseColor || emissiveColor != material->emissiveColor ||
        specularColor != material->specularColor || shininess != material->shininess ||
        opacity != material->opacity || diffuseMapKeys != material->diffuseMapKeys ||
        diffuseMap.size() != material->diffuseMap.size())
        return false;
    for (size_t i = 0; i < diffuseMap.size(); ++i) {
        auto const& mine = diffuseMap[i];
        auto const& theirs = material->diffuseMap[i];
        if (!mine || !theirs) {
            if (mine || theirs)
                return false;
        } else if (!mine->equals(*theirs)) {
            return false;
        }
    }
    return true;
}

size_t Material::hash() const {
    size_t hash = std::hash<std::wstring>()(name);
    auto const mix = [&hash](size_t value) { hash = hash * 31 + value; };
    for (auto const* colour : {&ambientColor, &diffuseColor, &emissiveColor, &specularColor})
        for (double const channel : *colour)
            mix(std::hash<double>()(channel));
    mix(std::hash<double>()(shininess));
    mix(std::hash<double>()(opacity));
    for (auto const& texture : diffuseMap)
        mix(texture ? texture->hash() : 0);
    return hash;
}

} // namespace koltx
