#include <citygml/CityModel.h>
#include <citygml/CityObject.h>
#include <citygml/Geometry.h>
#include <citygml/LinearRing.h>
#include <citygml/Polygon.h>

namespace citygml {

LinearRing::LinearRing(std::string id, bool exterior)
    : Object(std::move(id)), m_exterior(exterior) {}

Polygon::Polygon(std::string id) : AppearanceTarget(std::move(id)) {}

Geometry::Geometry(std::string id, GeometryType type, unsigned int lod)
    : AppearanceTarget(std::move(id)), m_type(type), m_lod(lod), m_tag(nullptr) {}

CityObject::CityObject(std::string id, CityObjectsType type, std::string const* tag)
    : FeatureObject(std::move(id)), m_type(type), m_tag(tag) {}

CityModel::CityModel() : FeatureObject(std::string()) {}

std::vector<CityObject const*> CityModel::getRootCityObjects() const {
    std::vector<CityObject const*> out;
    out.reserve(m_roots.size());
    for (auto const& r : m_roots)
        out.push_back(r.get());
    return out;
}

} // namespace citygml
