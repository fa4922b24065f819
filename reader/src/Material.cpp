#include <citygml/Material.h>

namespace citygml {

Material::Material(std::string id) : Appearance(std::move(id), "X3DMaterial") {}

} // namespace citygml
