#include "TileTree.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int MaxDepth = 30;
constexpr double LeastError = 0.01; // metres: a tile with children is never exact

} // namespace

TileTree::TileTree(std::vector<TileFeatures::Feature> const& list, std::size_t featureLimit,
                   uint64_t byteLimit)
    : features(list), maxFeatures(std::max<std::size_t>(1, featureLimit)),
      maxBytes(std::max<uint64_t>(1, byteLimit)) {
    std::vector<uint32_t> all(list.size());
    for (uint32_t i = 0; i < all.size(); ++i) {
        all[i] = i;
        biggest = std::max(biggest, list[i].size);
    }
    top.name = "0";
    build(top, std::move(all), 0);
}

bool TileTree::fits(std::vector<uint32_t> const& items) const {
    if (items.size() > maxFeatures)
        return false;
    uint64_t bytes = 0;
    for (uint32_t i : items)
        bytes += features[i].bytes;
    return bytes <= maxBytes;
}

void TileTree::build(Node& node, std::vector<uint32_t> items, int depth) {
    node.region = TileFeatures::empty();
    for (uint32_t i : items)
        TileFeatures::extend(node.region, features[i].region);
    if (fits(items) || depth >= MaxDepth) {
        node.content = std::move(items);
        return;
    }
    double lowE = INFINITY, lowN = INFINITY, highE = -INFINITY, highN = -INFINITY;
    for (uint32_t i : items) {
        lowE = std::min(lowE, features[i].east);
        highE = std::max(highE, features[i].east);
        lowN = std::min(lowN, features[i].north);
        highN = std::max(highN, features[i].north);
    }
    // The largest features stay here while they are large for this tile and fit half of it.
    std::stable_sort(items.begin(), items.end(),
                     [&](uint32_t a, uint32_t b) { return features[a].size > features[b].size; });
    double const large = std::max(highE - lowE, highN - lowN) / 4;
    uint64_t bytes = 0;
    std::size_t kept = 0;
    while (kept < items.size() && features[items[kept]].size >= large &&
           kept + 1 <= maxFeatures / 2 && bytes + features[items[kept]].bytes <= maxBytes / 2)
        bytes += features[items[kept++]].bytes;
    node.content.assign(items.begin(), items.begin() + kept);
    std::vector<uint32_t> rest(items.begin() + kept, items.end());
    std::sort(rest.begin(), rest.end()); // file order within a tile
    if (rest.empty())
        return;

    std::vector<std::vector<uint32_t>> groups(4);
    double const midE = (lowE + highE) / 2, midN = (lowN + highN) / 2;
    for (uint32_t i : rest)
        groups[(features[i].east >= midE ? 1 : 0) + (features[i].north >= midN ? 2 : 0)].push_back(
            i);
    bool const split = std::none_of(groups.begin(), groups.end(),
                                    [&](auto const& g) { return g.size() == rest.size(); });
    if (!split) {
        // Centres that coincide: runs in file order, each within the bounds.
        groups.clear();
        groups.emplace_back();
        for (uint32_t i : rest) {
            groups.back().push_back(i);
            if (!fits(groups.back())) {
                groups.back().pop_back();
                if (groups.back().empty()) {
                    groups.back().push_back(i); // one feature past the bounds on its own
                    groups.emplace_back();
                } else {
                    groups.push_back({i});
                }
            }
        }
        if (groups.back().empty())
            groups.pop_back();
    }
    double error = 0;
    for (uint32_t i : rest)
        error = std::max(error, features[i].size);
    node.error = std::max(error, LeastError);
    for (auto& group : groups) {
        if (group.empty())
            continue;
        node.children.emplace_back();
        Node& child = node.children.back();
        child.name = node.name + "-" + std::to_string(node.children.size() - 1);
        // Coinciding centres never split again: each run is a leaf.
        if (split)
            build(child, std::move(group), depth + 1);
        else {
            child.region = TileFeatures::empty();
            for (uint32_t i : group)
                TileFeatures::extend(child.region, features[i].region);
            child.content = std::move(group);
        }
        TileFeatures::extend(node.region, child.region);
    }
}
