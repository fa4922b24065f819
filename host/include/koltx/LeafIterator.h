#pragma once

#include "koltx/Shape.h"

#include <cstddef>
#include <memory>

namespace koltx {

class GenerateContext;
class InitialShape;

// Walks the leaves of one initial shape in their order.
class LeafIterator {
public:
    // Throws std::out_of_range for an index outside the context.
    static std::shared_ptr<LeafIterator> create(GenerateContext const& context, size_t index);

    // The next leaf, or null after the last.
    virtual std::shared_ptr<Shape> getNext();
    virtual ~LeafIterator();

protected:
    explicit LeafIterator(std::shared_ptr<InitialShape const> initialShape);

private:
    std::shared_ptr<InitialShape const> initialShape;
    size_t position = 0;
};

} // namespace koltx
