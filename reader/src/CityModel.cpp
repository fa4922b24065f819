#include <citygml/CityModel.h>

namespace citygml {

CityModel::CityModel() : FeatureObject(std::string()) {}

std::vector<CityObject const*> CityModel::getRootCityObjects() const {
    std::vector<CityObject const*> out;
    out.reserve(m_roots.size());
    for (auto const& r : m_roots)
        out.push_back(r.get());
    return out;
}

} // namespace citygml
