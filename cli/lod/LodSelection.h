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
    // The kept meshes, by their names, in their order; their parsed paths in `paths` when given,
    // so that a writer need not parse them again.
    std::vector<std::shared_ptr<koltx::Mesh>>
    apply(std::vector<std::shared_ptr<koltx::Mesh>> const& meshes,
          std::vector<MeshPath>* paths = nullptr) const;

private:
    Mode mode = Mode::Highest;
    int limit = 0;
};
