#include <citygml/TextureTargetDefinition.h>

namespace citygml {

TextureTargetDefinition::TextureTargetDefinition(std::string targetId,
                                                 std::shared_ptr<Texture> texture, std::string id)
    : AppearanceTargetDefinition<Texture>(std::move(targetId), std::move(texture), std::move(id)) {}

std::shared_ptr<TextureCoordinates>
TextureTargetDefinition::getTextureCoordinatesForID(std::string_view ringId) const {
    std::string_view want = ringId;
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
