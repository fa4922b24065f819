#pragma once

#include <citygml/HierarchyTracker.h>

#include <string>
#include <string_view>
#include <unordered_map>

namespace citygml {

// Id to element path for a whole model; keys and values point into the model's objects, which
// the index never outlives because every tracker that holds it belongs to that model.
class PathIndex {
public:
    std::unordered_map<std::string_view, HierarchyTracker const*> trackers;
};

} // namespace citygml
