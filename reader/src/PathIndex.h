#pragma once

#include <citygml/CityModel.h>
#include <citygml/HierarchyTracker.h>

#include <mutex>
#include <string_view>
#include <unordered_map>

namespace citygml {

// Id to element path for a whole model, built on the first question about an id other than the
// asker's own, so a caller that only asks objects about themselves never pays for it. Keys and
// values point into the model, which every tracker holding the index belongs to.
class PathIndex {
public:
    explicit PathIndex(CityModel const* model) : m_model(model) {}

    HierarchyTracker const* find(std::string_view id) const;

private:
    void build() const;

    CityModel const* m_model;
    mutable std::once_flag m_built;
    mutable std::unordered_map<std::string_view, HierarchyTracker const*> m_trackers;
};

} // namespace citygml
