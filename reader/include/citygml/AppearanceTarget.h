#pragma once

#include <citygml/MaterialTargetDefinition.h>
#include <citygml/Object.h>
#include <citygml/ObjectList.h>
#include <citygml/TextureTargetDefinition.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace citygml {

namespace detail {
class Access; // the reader, which fills these fields while it reads a document
}

class ObjectArena;

// Something an appearance can be applied to: a polygon (or a geometry, whose polygons then
// inherit it). Per theme and side there is at most one texture and one material; the first
// assignment in document order wins.
class AppearanceTarget : public Object {
public:
    AppearanceTarget(std::string_view id, ObjectArena* arena);

    // Themes in the order they were first assigned.
    std::vector<std::string> getAllTextureThemes(bool front) const;
    std::vector<std::string> getAllMaterialThemes(bool front) const;

    std::shared_ptr<TextureTargetDefinition>
    getTextureTargetDefinitionForTheme(std::string_view theme, bool front) const;
    std::shared_ptr<MaterialTargetDefinition>
    getMaterialTargetDefinitionForTheme(std::string_view theme, bool front) const;

    std::shared_ptr<Material const> getMaterialFor(std::string_view theme, bool front = true) const;
    std::shared_ptr<Texture const> getTextureFor(std::string_view theme, bool front = true) const;

protected:
    friend class detail::Access;
    // The model's storage, which holds this target and everything assigned to it.
    ObjectArena* m_arena;

private:
    struct Assignment {
        std::string_view theme;
        bool front;
        TextureTargetDefinition* texture;
        MaterialTargetDefinition* material;
    };
    ObjectList<Assignment> m_assignments;
};

} // namespace citygml
