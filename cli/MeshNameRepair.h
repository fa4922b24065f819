#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

// The encoder finds a mesh's place by the ids in its path alone, so that steps without an id
// fall into the first sibling without one. Paths of features without gml:id (and of surfaces
// that share a property element) then reach a node that another mesh made: the mesh lands
// under a foreign element, or adds no polygon at all. This gives the shallowest step without an
// id in such a path an id of its own, which makes the path distinct where it has to be. Ids of
// plain steps are not written; those of geometry steps are, and are chosen to be valid and new.
class MeshNameRepair {
public:
    // Reads the names in place and then calls `rename(index, newName)` for each one that
    // changes, in order; the name at `index` may be freed by then. The new names are made one
    // at a time, so that large ones never stand twice in memory. Returns how many changed.
    static std::size_t repair(std::vector<std::wstring_view> const& names,
                              std::function<void(std::size_t, std::wstring&&)> const& rename);
    // Renames in place; returns how many names changed.
    static std::size_t repair(std::vector<std::wstring>& names);
};
