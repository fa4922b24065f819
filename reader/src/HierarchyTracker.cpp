#include "PathIndex.h"

namespace citygml {

std::string HierarchyTracker::getNodeStackPath(std::string const& id,
                                               std::shared_ptr<CityGMLLogger>) const {
    if (id == trackedId())
        return m_path;
    if (!m_index)
        return {};
    HierarchyTracker const* other = m_index->find(id);
    return other ? other->m_path : std::string();
}

} // namespace citygml
