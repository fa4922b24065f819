#include <citygml/Polygon.h>

namespace citygml {

Polygon::Polygon(std::string id) : AppearanceTarget(std::move(id)) {}

} // namespace citygml
