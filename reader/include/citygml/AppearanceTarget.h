#pragma once

#include <citygml/MaterialTargetDefinition.h>
#include <citygml/Object.h>
#include <citygml/TextureTargetDefinition.h>

#include <memory>
#include <string>
#include <vector>

namespace citygml {

// Something an appearance can be applied to: a polygon (or a geometry, whose polygons then
// inherit it). Per theme and side there is at most one texture and one material; the first
// assignment in document order wins.
class AppearanceTarget : public Object {
public:
    explicit AppearanceTarget(std::string_view id);

    // Themes in the order they were first assigned.
    std::vector<std::string> getAllTextureThemes(bool front) const;
    std::vector<std::string> getAllMaterialThemes(bool front) const;

    std::shared_ptr<TextureTargetDefinition>
    getTextureTargetDefinitionForTheme(std::string const& theme, bool front) const;
    std::shared_ptr<MaterialTargetDefinition>
    getMaterialTargetDefinitionForTheme(std::string const& theme, bool front) const;

    std::shared_ptr<Material const> getMaterialFor(std::string const& theme,
                                                   bool front = true) const;
    std::shared_ptr<Texture const> getTextureFor(std::string const& theme, bool front = true) const;

private:
    friend class ModelBuilder;
    struct Assignment {
        std::string theme;
        bool front;
        std::shared_ptr<TextureTargetDefinition> texture;
        std::shared_ptr<MaterialTargetDefinition> material;
    };
    std::vector<Assignment> m_assignments;
};

} // namespace citygml
