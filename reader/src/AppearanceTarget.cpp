#include "ObjectArena.h"

#include <citygml/AppearanceTarget.h>

#include <algorithm>

namespace citygml {

AppearanceTarget::AppearanceTarget(std::string_view id, ObjectArena* arena)
    : Object(id), m_arena(arena) {}

std::vector<std::string> AppearanceTarget::getAllTextureThemes(bool front) const {
    std::vector<std::string> out;
    for (auto const& a : m_assignments)
        if (a.front == front && a.texture &&
            std::find(out.begin(), out.end(), a.theme) == out.end())
            out.emplace_back(a.theme);
    return out;
}

std::vector<std::string> AppearanceTarget::getAllMaterialThemes(bool front) const {
    std::vector<std::string> out;
    for (auto const& a : m_assignments)
        if (a.front == front && a.material &&
            std::find(out.begin(), out.end(), a.theme) == out.end())
            out.emplace_back(a.theme);
    return out;
}

std::shared_ptr<TextureTargetDefinition>
AppearanceTarget::getTextureTargetDefinitionForTheme(std::string_view theme, bool front) const {
    for (auto const& a : m_assignments)
        if (a.front == front && a.texture && a.theme == theme)
            return m_arena->share(a.texture);
    return nullptr;
}

std::shared_ptr<MaterialTargetDefinition>
AppearanceTarget::getMaterialTargetDefinitionForTheme(std::string_view theme, bool front) const {
    for (auto const& a : m_assignments)
        if (a.front == front && a.material && a.theme == theme)
            return m_arena->share(a.material);
    return nullptr;
}

std::shared_ptr<Material const> AppearanceTarget::getMaterialFor(std::string_view theme,
                                                                 bool front) const {
    auto d = getMaterialTargetDefinitionForTheme(theme, front);
    return d ? d->getAppearance() : nullptr;
}

std::shared_ptr<Texture const> AppearanceTarget::getTextureFor(std::string_view theme,
                                                               bool front) const {
    auto d = getTextureTargetDefinitionForTheme(theme, front);
    return d ? d->getAppearance() : nullptr;
}

} // namespace citygml
