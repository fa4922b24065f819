#include <citygml/CityObject.h>

namespace citygml {

CityObject::CityObject(std::string id, CityObjectsType type, std::string const* tag)
    : FeatureObject(std::move(id)), m_type(type), m_tag(tag) {}

} // namespace citygml
