#include "PathIndex.h"

namespace citygml {

std::string HierarchyTracker::getNodeStackPath(std::string const& id,
                                               std::shared_ptr<CityGMLLogger>) const {
    if (id == trackedId())
        return m_path;
    if (!m_index)
        return {};
    auto it = m_index->trackers.find(id);
    return it == m_index->trackers.end() ? std::string() : it->second->m_path;
}

} // namespace citygml
