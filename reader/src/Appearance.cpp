#include <citygml/Appearance.h>
#include <citygml/Material.h>
#include <citygml/MaterialTargetDefinition.h>
#include <citygml/Texture.h>
#include <citygml/TextureCoordinates.h>
#include <citygml/TextureTargetDefinition.h>

namespace citygml {

Appearance::Appearance(std::string id, std::string typeName)
    : Object(std::move(id)), m_type(std::move(typeName)) {}

Material::Material(std::string id) : Appearance(std::move(id), "X3DMaterial") {}

Texture::Texture(std::string id, std::string typeName)
    : Appearance(std::move(id), std::move(typeName)) {}

TextureCoordinates::TextureCoordinates(std::string id, std::string targetRingId)
    : Object(std::move(id)), m_targetRingId(std::move(targetRingId)) {}

MaterialTargetDefinition::MaterialTargetDefinition(std::string targetId,
                                                   std::shared_ptr<Material> material,
                                                   std::string id)
    : AppearanceTargetDefinition<Material>(std::move(targetId), std::move(material),
                                           std::move(id)) {}

TextureTargetDefinition::TextureTargetDefinition(std::string targetId,
                                                 std::shared_ptr<Texture> texture, std::string id)
    : AppearanceTargetDefinition<Texture>(std::move(targetId), std::move(texture), std::move(id)) {}

std::shared_ptr<TextureCoordinates>
TextureTargetDefinition::getTextureCoordinatesForID(std::string const& ringId) const {
    std::string_view want(ringId);
    if (!want.empty() && want.front() == '#')
        want.remove_prefix(1);
    for (auto const& c : m_coords) {
        std::string_view have(c->getTargetLinearRingID());
        if (!have.empty() && have.front() == '#')
            have.remove_prefix(1);
        if (have == want)
            return c;
    }
    return nullptr;
}

} // namespace citygml
