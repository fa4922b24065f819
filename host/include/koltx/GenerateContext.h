#pragma once

#include "koltx/InitialShape.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace kolt {
class Cache;
class Callbacks;
} // namespace kolt

namespace koltx {

// One generation: its initial shapes, the cache and the callbacks that extensions use during it.
// Neither pointer is owned.
class GenerateContext {
public:
    GenerateContext(std::vector<std::shared_ptr<InitialShape const>> initialShapes,
                    kolt::Cache* cache, kolt::Callbacks* callbacks);

    // Throws std::out_of_range for an index at or above the count.
    InitialShape const* getInitialShape(size_t index) const;
    std::shared_ptr<InitialShape const> const& getInitialShapePtr(size_t index) const;
    size_t getInitialShapeCount() const { return initialShapes.size(); }

    kolt::Cache* cache;
    kolt::Callbacks* callbacks;

private:
    std::vector<std::shared_ptr<InitialShape const>> initialShapes;
};

} // namespace koltx
