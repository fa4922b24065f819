#include <citygml/CityObject.h>

namespace citygml {

CityObject::CityObject(std::string_view id, CityObjectsType type, std::string const* tag)
    : FeatureObject(id), m_type(type), m_tag(tag) {}

} // namespace citygml
