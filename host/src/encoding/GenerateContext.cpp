#include "koltx/GenerateContext.h"

#include <stdexcept>
#include <string>
#include <utility>

namespace koltx {

GenerateContext::GenerateContext(std::vector<std::shared_ptr<InitialShape const>> initialShapes,
                                 kolt::Cache* cache, kolt::Callbacks* callbacks)
    : cache(cache), callbacks(callbacks), initialShapes(std::move(initialShapes)) {
    for (auto const& shape : this->initialShapes)
        if (!shape)
            throw std::invalid_argument("GenerateContext: null initial shape");
}

std::shared_ptr<InitialShape const> const& GenerateContext::getInitialShapePtr(size_t index) const {
    if (index >= initialShapes.size())
        throw std::out_of_range("initial shape index " + std::to_string(index) + " of " +
                                std::to_string(initialShapes.size()));
    return initialShapes[index];
}

InitialShape const* GenerateContext::getInitialShape(size_t index) const {
    return getInitialShapePtr(index).get();
}

} // namespace koltx
