#include "decoder/DecodedMaterials.h"

#include "decoder/WideText.h"

#include <citygml/Material.h>
#include <citygml/Polygon.h>
#include <citygml/Texture.h>
#include <koltx/MaterialBuilder.h>
#include <koltx/MeshBuilder.h>
#include <koltx/ResolveMap.h>

#include <exception>
#include <utility>
#include <vector>

std::wstring const DecodedMaterials::DefaultMaterialKey = L"__$$__DEFAULT_MATERIAL__$$__";

namespace {

std::vector<double> widen(citygml::TVec3f const& colour, double factor = 1.0) {
    return {static_cast<double>(colour.x) * factor, static_cast<double>(colour.y) * factor,
            static_cast<double>(colour.z) * factor};
}

} // namespace

DecodedMaterials::DecodedMaterials(TextureResolver textureResolver)
    : resolver(std::move(textureResolver)) {
    koltx::MaterialBuilder builder;
    defaultMaterial = builder.createSharedAndReset(nullptr);
}

void DecodedMaterials::setFile(std::wstring const& key, koltx::ResolveMap const* map) {
    if (&key != &fileKey)
        fileKey = key;
    resolveMap = map;
}

uint32_t DecodedMaterials::getMaterialIndex(koltx::MeshBuilder& meshBuilder,
                                            MaterialIndices& materialIndices,
                                            citygml::Polygon const& polygon,
                                            std::wstring& warnings) {
    // A texture has priority over a material; only the first theme is ever used.
    std::vector<std::string> const textureThemes = polygon.getAllTextureThemes(true);
    std::vector<std::string> const materialThemes = polygon.getAllMaterialThemes(true);
    if (!textureThemes.empty()) {
        auto const definition = polygon.getTextureTargetDefinitionForTheme(textureThemes[0], true);
        std::shared_ptr<citygml::Texture> const texture =
            definition ? definition->getAppearance() : nullptr;
        if (texture) {
            return indexFor(meshBuilder, materialIndices, toWide(texture->getId()),
                            [&] { return makeTextureMaterial(texture.get(), warnings); });
        }
    }
    if (textureThemes.empty() && !materialThemes.empty()) {
        std::shared_ptr<citygml::Material const> const material =
            polygon.getMaterialFor(materialThemes[0]);
        if (material) {
            return indexFor(meshBuilder, materialIndices, toWide(material->getId()),
                            [&] { return makeX3DMaterial(material.get()); });
        }
    }
    auto const known = materialIndices.find(DefaultMaterialKey);
    if (known != materialIndices.end())
        return known->second;
    uint32_t const index = meshBuilder.addMaterial(defaultMaterial);
    materialIndices.emplace(DefaultMaterialKey, index);
    return index;
}

uint32_t DecodedMaterials::indexFor(koltx::MeshBuilder& meshBuilder,
                                    MaterialIndices& materialIndices, std::wstring const& key,
                                    std::function<std::shared_ptr<koltx::Material>()> const& make) {
    auto const known = materialIndices.find(key);
    if (known != materialIndices.end())
        return known->second;
    auto cached = materialCache.find(key);
    if (cached == materialCache.end())
        cached = materialCache.emplace(key, make()).first;
    uint32_t const index = meshBuilder.addMaterial(cached->second);
    materialIndices.emplace(key, index);
    return index;
}

std::shared_ptr<koltx::Material>
DecodedMaterials::makeTextureMaterial(citygml::Texture const* texture, std::wstring& warnings) {
    if (texture == nullptr)
        return defaultMaterial;
    std::wstring const url = toWide(texture->getUrl());
    std::wstring const anchored = koltx::ResolveMap::anchorRelativeKey(resolveMap, fileKey, url);
    std::shared_ptr<koltx::Texture> const resolved = resolveTextureCached(anchored, warnings);
    // The caller caches this too, so later polygons with the same texture are not tried again.
    if (!resolved)
        return defaultMaterial;
    koltx::MaterialBuilder builder;
    builder.diffuseMap({resolved}, {anchored});
    return builder.createSharedAndReset(nullptr);
}

std::shared_ptr<koltx::Material>
DecodedMaterials::makeX3DMaterial(citygml::Material const* material) {
    if (material == nullptr)
        return defaultMaterial;
    koltx::MaterialBuilder builder;
    builder.shininess(static_cast<double>(material->getShininess()));
    builder.opacity(1.0 - static_cast<double>(material->getTransparency()));
    // X3D gives ambient as an intensity of the diffuse colour.
    builder.ambientColor(
        widen(material->getDiffuse(), static_cast<double>(material->getAmbientIntensity())));
    builder.diffuseColor(widen(material->getDiffuse()));
    builder.emissiveColor(widen(material->getEmissive()));
    builder.specularColor(widen(material->getSpecular()));
    return builder.createSharedAndReset(nullptr);
}

std::shared_ptr<koltx::Texture> DecodedMaterials::resolveTextureCached(std::wstring const& key,
                                                                       std::wstring& warnings) {
    auto const cached = textureCache.find(key);
    if (cached != textureCache.end())
        return cached->second;
    try {
        std::shared_ptr<koltx::Texture> texture = resolver(key, &warnings);
        if (texture)
            textureCache.emplace(key, texture);
        return texture;
    } catch (std::exception const& e) {
        warnings +=
            L"Could not resolve texture " + key + L" - error '" + toWide(e.what()) + L"'.\n";
    } catch (...) {
        warnings += L"Could not resolve texture " + key + L" - unspecified error.\n";
    }
    return nullptr;
}
