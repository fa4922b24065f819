#include <citygml/FeatureObject.h>

namespace citygml {

FeatureObject::FeatureObject(std::string_view id) : Object(id) {}

} // namespace citygml
