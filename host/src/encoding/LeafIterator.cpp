#include "koltx/LeafIterator.h"

#include "koltx/GenerateContext.h"

#include <utility>

namespace koltx {

std::shared_ptr<LeafIterator> LeafIterator::create(GenerateContext const& context, size_t index) {
    return std::shared_ptr<LeafIterator>(new LeafIterator(context.getInitialShapePtr(index)));
}

LeafIterator::LeafIterator(std::shared_ptr<InitialShape const> initialShape)
    : initialShape(std::move(initialShape)) {}

LeafIterator::~LeafIterator() = default;

std::shared_ptr<Shape> LeafIterator::getNext() {
    auto const& leaves = initialShape->getLeaves();
    if (position >= leaves.size())
        return std::shared_ptr<Shape>();
    return leaves[position++];
}

} // namespace koltx
