#include <citygml/FeatureObject.h>

namespace citygml {

FeatureObject::FeatureObject(std::string id) : Object(std::move(id)) {}

} // namespace citygml
