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

void FeatureTable::reserve(std::size_t rows) {
    lods.reserve(rows);
    for (Column* column : {&ids, &tags, &topIdColumn, &paths})
        column->offsets.reserve(rows + 1);
}

uint32_t FeatureTable::add(MeshPath const& path) {
    bool added = false;
    uint32_t const number = features.insert(path.featureKey, added);
    if (!added) {
        if (path.lod > lods[number])
            lods[number] = path.lod;
        return number;
    }
    std::string const& top = topId(path);
    if (path.featureKey == path.topKey)
        ids.add(top);
    else if (path.featureId.empty())
        ids.add(generated(path.featureTag));
    else
        ids.add(path.featureId);
    tags.add(path.featureTag);
    topIdColumn.add(top);
    paths.add(path.featureKey);
    lods.push_back(path.lod);
    return number;
}

void FeatureTable::encode(std::string& bytes,
                          std::vector<std::pair<uint64_t, uint64_t>>& views) const {
    auto const padded = [](std::size_t n) { return (n + 7) & ~std::size_t(7); };
    Column const* const columns[] = {&ids, &tags, &topIdColumn, &paths};
    std::size_t total = bytes.size() + padded(lods.size());
    for (Column const* column : columns)
        total += padded(column->values.size()) + padded(column->offsets.size() * 4);
    bytes.reserve(total);
    auto const endView = [&](std::size_t start) {
        views.emplace_back(start, bytes.size() - start);
        bytes.resize(padded(bytes.size()), '\0');
    };
    for (Column const* column : columns) {
        std::size_t const start = bytes.size();
        bytes += column->values;
        endView(start);
        std::size_t const at = bytes.size();
        bytes.append(reinterpret_cast<char const*>(column->offsets.data()),
                     column->offsets.size() * 4);
        endView(at);
    }
    std::size_t const at = bytes.size();
    for (int lod : lods)
        bytes.push_back(static_cast<char>(lod < 0 ? 255 : lod));
    endView(at);
}
