#pragma once

#include "TileFeatures.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

// A quadtree over feature positions with additive refinement: features stay whole, each in
// exactly one tile. A tile over its bounds carries the features that are large for its extent;
// the rest go to its four quadrants until a tile holds at most `maxFeatures` features and
// `maxBytes` estimated bytes. A tile's geometric error is the size of the largest feature below
// it (what is missing when only it is drawn), 0 at the leaves.
class TileTree {
public:
    struct Node {
        std::string name;              // "0" for the root, "0-2" for its third child, ...
        std::vector<uint32_t> content; // features carried, indices into the list given
        std::vector<Node> children;
        double error = 0;
        TileFeatures::Region region{};
    };

    TileTree(std::vector<TileFeatures::Feature> const& features, std::size_t maxFeatures,
             uint64_t maxBytes);

    Node const& root() const { return top; }
    // The size of the largest feature: the error of drawing none of them.
    double largest() const { return biggest; }

private:
    void build(Node& node, std::vector<uint32_t> items, int depth);
    bool fits(std::vector<uint32_t> const& items) const;

    std::vector<TileFeatures::Feature> const& features;
    std::size_t maxFeatures;
    uint64_t maxBytes;
    Node top;
    double biggest = 0;
};
