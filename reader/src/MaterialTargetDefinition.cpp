#include <citygml/MaterialTargetDefinition.h>

namespace citygml {

MaterialTargetDefinition::MaterialTargetDefinition(std::string targetId,
                                                   std::shared_ptr<Material> material,
                                                   std::string id)
    : AppearanceTargetDefinition<Material>(std::move(targetId), std::move(material),
                                           std::move(id)) {}

} // namespace citygml
