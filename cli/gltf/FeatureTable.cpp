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

void FeatureTable::encode(std::string& bytes,
                          std::vector<std::pair<uint64_t, uint64_t>>& views) const {
    auto const padded = [](std::size_t n) { return (n + 7) & ~std::size_t(7); };
    // Written in place, in a buffer of its final size.
    std::size_t total = bytes.size() + padded(table.size()) + 4 * padded((table.size() + 1) * 4);
    for (auto const& row : table)
        total += row.id.size() + row.tag.size() + row.topId.size() + row.path.size();
    bytes.reserve(total + 4 * 7);
    auto const endView = [&](std::size_t start) {
        views.emplace_back(start, bytes.size() - start);
        bytes.resize(padded(bytes.size()), '\0');
    };
    auto const addStrings = [&](std::string Row::*field) {
        std::size_t const start = bytes.size();
        std::vector<uint32_t> offsets{0};
        offsets.reserve(table.size() + 1);
        for (auto const& row : table) {
            bytes += row.*field;
            offsets.push_back(static_cast<uint32_t>(bytes.size() - start));
        }
        endView(start);
        std::size_t const at = bytes.size();
        bytes.append(reinterpret_cast<char const*>(offsets.data()), offsets.size() * 4);
        endView(at);
    };
    addStrings(&Row::id);
    addStrings(&Row::tag);
    addStrings(&Row::topId);
    addStrings(&Row::path);
    std::size_t const at = bytes.size();
    for (auto const& row : table)
        bytes.push_back(static_cast<char>(row.lod < 0 ? 255 : row.lod));
    endView(at);
}
