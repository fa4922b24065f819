#pragma once

#include "gml/AppearanceMemberNode.h"

#include <set>
#include <vector>

namespace gml {

// An "app:X3DMaterial" for an untextured host material, with the polygons that use it.
class BasicMaterialAppearanceMemberNode : public AppearanceMemberNode {
public:
    explicit BasicMaterialAppearanceMemberNode(std::shared_ptr<koltx::Material> const& material);

    bool matches(std::shared_ptr<koltx::Material> const& material) const override;
    // Only the polygon id is kept; each id stands once.
    void addTarget(std::wstring const& polygonId, std::wstring const& ringId,
                   std::shared_ptr<koltx::Mesh> const& mesh, std::uint32_t faceIndex) override;
    void addTarget(std::shared_ptr<PolygonNode const> const& polygon) override;
    void write(XmlWriter& writer) override;

    std::vector<double> diffuseColor;
    std::vector<double> emissiveColor;
    std::vector<double> specularColor;
    float shininess;
    float transparency;
    float ambientIntensity;
    std::set<std::wstring> targets;
};

} // namespace gml
