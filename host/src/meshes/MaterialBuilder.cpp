#include "koltx/MaterialBuilder.h"

#include <algorithm>
#include <string>

namespace koltx {

namespace {

bool isColour(std::vector<double> const& rgb) {
    return rgb.size() == 3;
}

} // namespace

MaterialBuilder::MaterialBuilder() {
    reset();
}

MaterialBuilder::MaterialBuilder(Material const& source) {
    reset();
    name(source.getName());
    material->ambientColor = source.getAmbientColor();
    material->diffuseColor = source.getDiffuseColor();
    material->emissiveColor = source.getEmissiveColor();
    material->specularColor = source.getSpecularColor();
    material->shininess = source.getShininess();
    material->opacity = source.getOpacity();
    material->diffuseMap = source.getDiffuseMap();
    material->diffuseMapKeys = source.getDiffuseMapKeys();
}

MaterialBuilder::~MaterialBuilder() = default;

void MaterialBuilder::reset() {
    material.reset(new Material());
    material->name = L"default";
    material->ambientColor = {0.0, 0.0, 0.0};
    material->diffuseColor = {1.0, 1.0, 1.0};
    material->emissiveColor = {0.0, 0.0, 0.0};
    material->specularColor = {0.0, 0.0, 0.0};
    material->shininess = 0.0;
    material->opacity = 1.0;
    problems.clear();
}

MaterialBuilder& MaterialBuilder::name(std::wstring const& value) {
    material->name = value;
    return *this;
}

MaterialBuilder& MaterialBuilder::shininess(double value) {
    if (!(value >= 0.0)) {
        problems += L"Material shininess " + std::to_wstring(value) + L" replaced by 0.\n";
        value = 0.0;
    }
    material->shininess = value;
    return *this;
}

MaterialBuilder& MaterialBuilder::opacity(double value) {
    if (!(value >= 0.0 && value <= 1.0)) {
        double const clamped = value > 1.0 ? 1.0 : 0.0;
        problems += L"Material opacity " + std::to_wstring(value) + L" clamped to " +
                    std::to_wstring(clamped) + L".\n";
        value = clamped;
    }
    material->opacity = value;
    return *this;
}

MaterialBuilder& MaterialBuilder::setColour(std::vector<double>& field,
                                            std::vector<double> const& rgb, wchar_t const* label) {
    if (isColour(rgb))
        field = rgb;
    else
        problems += std::wstring(L"Material ") + label + L" colour with " +
                    std::to_wstring(rgb.size()) + L" entries ignored.\n";
    return *this;
}

MaterialBuilder& MaterialBuilder::ambientColor(std::vector<double> const& rgb) {
    return setColour(material->ambientColor, rgb, L"ambient");
}

MaterialBuilder& MaterialBuilder::diffuseColor(std::vector<double> const& rgb) {
    return setColour(material->diffuseColor, rgb, L"diffuse");
}

MaterialBuilder& MaterialBuilder::emissiveColor(std::vector<double> const& rgb) {
    return setColour(material->emissiveColor, rgb, L"emissive");
}

MaterialBuilder& MaterialBuilder::specularColor(std::vector<double> const& rgb) {
    return setColour(material->specularColor, rgb, L"specular");
}

MaterialBuilder& MaterialBuilder::diffuseMap(std::vector<std::shared_ptr<Texture>> const& textures,
                                             std::vector<std::wstring> const& keys) {
    material->diffuseMap = textures;
    material->diffuseMapKeys = keys;
    if (keys.size() != textures.size()) {
        problems += L"Material diffuse map has " + std::to_wstring(textures.size()) +
                    L" textures but " + std::to_wstring(keys.size()) + L" keys.\n";
        material->diffuseMapKeys.resize(textures.size());
    }
    return *this;
}

std::shared_ptr<Material> MaterialBuilder::createSharedAndReset(std::wstring* warnings) {
    if (warnings != nullptr)
        *warnings += problems;
    std::shared_ptr<Material> result(material.release());
    reset();
    return result;
}

} // namespace koltx
