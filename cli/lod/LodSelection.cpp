#include "LodSelection.h"

#include <kolt/StringUtils.h>
#include <koltx/Mesh.h>

#include <string_view>
#include <unordered_map>

LodSelection LodSelection::fromOptions(bool allLods, std::optional<int> lod) {
    if (allLods)
        return LodSelection(Mode::All, 0);
    if (lod)
        return LodSelection(Mode::AtMost, *lod);
    return LodSelection(Mode::Highest, 0);
}

std::vector<bool> LodSelection::keep(std::vector<MeshPath> const& paths) const {
    std::vector<bool> out(paths.size(), true);
    if (mode == Mode::All)
        return out;
    std::unordered_map<std::string_view, int> chosen; // per top-level feature
    for (auto const& path : paths) {
        if (path.lod < 0 || (mode == Mode::AtMost && path.lod > limit))
            continue;
        auto [it, added] = chosen.emplace(path.topKey, path.lod);
        if (!added && path.lod > it->second)
            it->second = path.lod;
    }
    for (std::size_t i = 0; i < paths.size(); ++i) {
        if (paths[i].lod < 0)
            continue;
        auto const it = chosen.find(paths[i].topKey);
        out[i] = it != chosen.end() && it->second == paths[i].lod;
    }
    return out;
}

std::vector<std::shared_ptr<koltx::Mesh>>
LodSelection::apply(std::vector<std::shared_ptr<koltx::Mesh>> const& meshes,
                    std::vector<MeshPath>* paths) const {
    if (mode == Mode::All && paths == nullptr)
        return meshes;
    std::vector<MeshPath> all;
    all.reserve(meshes.size());
    for (auto const& mesh : meshes)
        all.push_back(MeshPath::parse(mesh->getName()));
    std::vector<bool> const chosen = keep(all);
    std::vector<std::shared_ptr<koltx::Mesh>> out;
    std::size_t kept = 0;
    for (std::size_t i = 0; i < meshes.size(); ++i) {
        if (!chosen[i])
            continue;
        out.push_back(meshes[i]);
        if (paths != nullptr && kept != i)
            all[kept] = std::move(all[i]);
        ++kept;
    }
    if (paths != nullptr) {
        all.resize(kept);
        *paths = std::move(all);
    }
    return out;
}
