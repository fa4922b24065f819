#include "ObjectArena.h"
#include "PathIndex.h"

#include <citygml/CityModel.h>

namespace citygml {

CityModel::CityModel()
    : OwnedId(std::string()), FeatureObject(std::string_view()),
      m_arena(std::make_shared<ObjectArena>()), m_index(std::make_unique<PathIndex>(this)) {}

CityModel::~CityModel() = default;

std::vector<CityObject const*> CityModel::getRootCityObjects() const {
    return {m_roots.begin(), m_roots.end()};
}

} // namespace citygml
