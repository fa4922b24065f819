#pragma once

#include <citygml/AppearanceTargetDefinition.h>
#include <citygml/Material.h>

namespace citygml {

class MaterialTargetDefinition : public AppearanceTargetDefinition<Material> {
public:
    using AppearanceTargetDefinition<Material>::AppearanceTargetDefinition;
};

} // namespace citygml
