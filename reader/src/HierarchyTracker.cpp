#include "PathIndex.h"

namespace citygml {

std::string HierarchyTracker::getNodeStackPath(std::string_view id,
                                               std::shared_ptr<CityGMLLogger>) const {
    if (id == trackedId())
        return std::string(m_path);
    if (!m_index)
        return {};
    HierarchyTracker const* other = m_index->find(id);
    return other ? std::string(other->m_path) : std::string();
}

} // namespace citygml
