#include "ObjectArena.h"

#include <citygml/TextureTargetDefinition.h>

namespace citygml {

std::shared_ptr<TextureCoordinates>
TextureTargetDefinition::getTextureCoordinatesForID(std::string_view ringId) const {
    std::string_view want = ringId;
    if (!want.empty() && want.front() == '#')
        want.remove_prefix(1);
    for (TextureCoordinates* c : m_coords) {
        std::string_view have = c->getTargetLinearRingID();
        if (!have.empty() && have.front() == '#')
            have.remove_prefix(1);
        if (have == want)
            return m_arena->share(c);
    }
    return nullptr;
}

std::shared_ptr<TextureCoordinates>
TextureTargetDefinition::getTextureCoordinates(unsigned int i) const {
    return m_arena->share(m_coords.at(i));
}

} // namespace citygml
