#pragma once

#include <string>
#include <string_view>

// What a mesh path says about its mesh: the top-level feature, the feature whose geometry it is,
// and the level of detail. A path such as
// `bldg:Building[b]\bldg:boundedBy[]\bldg:WallSurface[w]\bldg:lod2MultiSurface[]\gml:MultiSurface[]\`
// gives top `bldg:Building[b]`, feature `bldg:WallSurface` with id `w`, level 2.
struct MeshPath {
    std::string topKey;     // the first element as written, e.g. `bldg:Building[b]`
    std::string topId;      // its id, empty when it has none
    std::string featureKey; // the path up to and including the feature's element
    std::string featureTag; // e.g. `bldg:WallSurface`
    std::string featureId;  // empty when the feature has no id in the path
    int lod = -1;           // -1 when no element names a level

    static MeshPath parse(std::string_view path);
    // The same into `out`, whose strings keep their room for the next path.
    static void parse(std::string_view path, MeshPath& out);
    // The same for a host mesh name (UTF-16).
    static MeshPath parse(std::wstring const& name);
};
