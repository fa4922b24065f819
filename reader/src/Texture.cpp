#include <citygml/Texture.h>

namespace citygml {

Texture::Texture(std::string id, std::string typeName)
    : Appearance(std::move(id), std::move(typeName)) {}

} // namespace citygml
