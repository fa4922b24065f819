#include "FeatureTable.h"

std::string FeatureTable::generated(std::string const& tag) {
    return tag + ":" + std::to_string(++counters[tag]);
}

std::string const& FeatureTable::topId(MeshPath const& path) {
    auto it = topIds.find(path.topKey);
    if (it == topIds.end()) {
        std::string const tag = path.topKey.substr(0, path.topKey.find('['));
        it = topIds.emplace(path.topKey, path.topId.empty() ? generated(tag) : path.topId).first;
    }
    return it->second;
}

uint32_t FeatureTable::add(MeshPath const& path) {
    auto const known = byKey.find(path.featureKey);
    if (known != byKey.end()) {
        Row& row = table[known->second];
        if (path.lod > row.lod)
            row.lod = path.lod;
        return known->second;
    }
    Row row;
    row.tag = path.featureTag;
    row.topId = topId(path);
    row.id = path.featureKey == path.topKey
                 ? row.topId
                 : (path.featureId.empty() ? generated(path.featureTag) : path.featureId);
    row.path = path.featureKey;
    row.lod = path.lod;
    uint32_t const index = static_cast<uint32_t>(table.size());
    table.push_back(std::move(row));
    byKey.emplace(path.featureKey, index);
    return index;
}
