#include "koltx/InitialShape.h"

#include "kolt/AttributeMap.h"
#include "kolt/AttributeMapBuilder.h"
#include "koltx/KOLTUtils.h"

#include <stdexcept>
#include <utility>

namespace koltx {

InitialShape::InitialShape(std::wstring name, std::shared_ptr<kolt::AttributeMap const> attributes,
                           std::vector<std::shared_ptr<Shape>> leaves,
                           std::shared_ptr<Geometry> geometry)
    : name(std::move(name)), attributes(std::move(attributes)), leaves(std::move(leaves)),
      geometry(std::move(geometry)) {
    for (auto const& leaf : this->leaves)
        if (!leaf)
            throw std::invalid_argument("InitialShape: null leaf");
    if (!this->attributes) {
        KOLTUtils::AttributeMapBuilderPtr builder(kolt::AttributeMapBuilder::create());
        this->attributes = KOLTUtils::share(builder->createAttributeMap());
    }
}

InitialShape::~InitialShape() = default;

} // namespace koltx
