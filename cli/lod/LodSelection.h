#pragma once

#include "MeshPath.h"

#include <memory>
#include <optional>
#include <vector>

namespace koltx {
class Mesh;
}

// Which meshes a mesh output keeps. Levels are chosen per top-level feature, so that a building's
// LoD1 block and its LoD2 wall surfaces never overlap; meshes without a level are always kept.
class LodSelection {
public:
    enum class Mode { Highest, AtMost, All };

    LodSelection() = default;
    LodSelection(Mode mode, int limit) : mode(mode), limit(limit) {}
    // The tool's options: `--all-lods` wins, then `--lod N`, else the highest level.
    static LodSelection fromOptions(bool allLods, std::optional<int> lod);

    // One flag per path: true when the mesh is kept.
    std::vector<bool> keep(std::vector<MeshPath> const& paths) const;
    // The kept meshes, by their names, in their order.
    std::vector<std::shared_ptr<koltx::Mesh>>
    apply(std::vector<std::shared_ptr<koltx::Mesh>> const& meshes) const;

private:
    Mode mode = Mode::Highest;
    int limit = 0;
};
