#include "FeatureTable.h"

std::string FeatureTable::generated(std::string const& tag) {
    return tag + ":" + std::to_string(++counters[tag]);
}

std::string const& FeatureTable::topId(MeshPath const& path) {
    bool added = false;
    uint32_t const number = tops.insert(path.topKey, added);
    if (added) {
        std::string const tag = path.topKey.substr(0, path.topKey.find('['));
        topIds.push_back(path.topId.empty() ? generated(tag) : path.topId);
    }
    return topIds[number];
}

uint32_t FeatureTable::add(MeshPath const& path) {
    bool added = false;
    uint32_t const number = features.insert(path.featureKey, added);
    if (!added) {
        Row& row = table[number];
        if (path.lod > row.lod)
            row.lod = path.lod;
        return number;
    }
    Row row;
    row.tag = path.featureTag;
    row.topId = topId(path);
    row.id = path.featureKey == path.topKey
                 ? row.topId
                 : (path.featureId.empty() ? generated(path.featureTag) : path.featureId);
    row.path = path.featureKey;
    row.lod = path.lod;
    table.push_back(std::move(row));
    return number;
}
