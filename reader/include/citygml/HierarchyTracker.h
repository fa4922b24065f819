#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace citygml {

namespace detail {
class Access; // the reader, which fills these fields while it reads a document
}

class CityGMLLogger;
class PathIndex;

// Knows the element path of every city object and geometry of one model. CityObject and Geometry
// inherit it, so `object.getNodeStackPath(object.getId(), nullptr)` gives the object's own path.
class HierarchyTracker {
public:
    virtual ~HierarchyTracker() = default;

    // Elements from the enclosing object (exclusive) down to the one with `id` (inclusive), each
    // as "tag[id]\" or "tag\"; a root object's path is its own element; a geometry nested in
    // another geometry has its own element alone. Empty for an unknown id.
    std::string getNodeStackPath(std::string_view id, std::shared_ptr<CityGMLLogger> logger) const;

    // This element's own path, stored once in the model.
    std::string_view getOwnNodeStackPath() const { return m_path; }

protected:
    friend class detail::Access;
    std::string_view m_path;
    // The model's index, which answers for ids other than this element's.
    PathIndex const* m_index = nullptr;
    // Id the stored path belongs to (the owning object's id).
    virtual std::string_view trackedId() const = 0;
};

} // namespace citygml
