#include "PathIndex.h"

namespace citygml {

namespace {

void addGeometry(std::unordered_map<std::string_view, HierarchyTracker const*>& out,
                 Geometry const& g) {
    out.emplace(g.getId(), &g);
    for (unsigned i = 0; i < g.getGeometriesCount(); ++i)
        addGeometry(out, g.getGeometry(i));
}

void addObject(std::unordered_map<std::string_view, HierarchyTracker const*>& out,
               CityObject const& o) {
    out.emplace(o.getId(), &o);
    for (unsigned i = 0; i < o.getChildCityObjectsCount(); ++i)
        addObject(out, o.getChildCityObject(i));
    for (unsigned i = 0; i < o.getGeometriesCount(); ++i)
        addGeometry(out, o.getGeometry(i));
}

} // namespace

HierarchyTracker const* PathIndex::find(std::string_view id) const {
    std::call_once(m_built, [this] { build(); });
    auto it = m_trackers.find(id);
    return it == m_trackers.end() ? nullptr : it->second;
}

void PathIndex::build() const {
    for (unsigned i = 0; i < m_model->getNumRootCityObjects(); ++i)
        addObject(m_trackers, m_model->getRootCityObject(i));
}

} // namespace citygml
