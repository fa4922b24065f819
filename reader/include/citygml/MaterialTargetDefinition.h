#pragma once

#include <citygml/AppearanceTargetDefinition.h>
#include <citygml/Material.h>

namespace citygml {

class MaterialTargetDefinition : public AppearanceTargetDefinition<Material> {
public:
    MaterialTargetDefinition(std::string targetId, std::shared_ptr<Material> material,
                             std::string id);
};

} // namespace citygml
