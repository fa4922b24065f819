#pragma once

#include "gml/AppearanceMemberNode.h"

#include <set>
#include <vector>

namespace gml {

// An "app:X3DMaterial" for an untextured host material, with the polygons that use it.
class BasicMaterialAppearanceMemberNode : public AppearanceMemberNode {
public:
    explicit BasicMaterialAppearanceMemberNode(const std::shared_ptr<koltx::Material>& material);

    bool matches(const std::shared_ptr<koltx::Material>& material) const override;
    // Only the polygon id is kept; each id stands once.
    void addTarget(const std::wstring& polygonId, const std::wstring& ringId,
                   const std::shared_ptr<koltx::Mesh>& mesh, std::uint32_t faceIndex) override;
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
