#include "gml/BasicMaterialAppearanceMemberNode.h"

#include "gml/XmlWriter.h"

#include <koltx/Material.h>

#include <algorithm>

namespace gml {

namespace {

double luminance(std::vector<double> const& rgb) {
    return 0.2126 * rgb[0] + 0.7152 * rgb[1] + 0.0722 * rgb[2];
}

// X3D knows the ambient colour only as an intensity relative to the diffuse colour.
float ambientIntensityOf(koltx::Material const& material) {
    std::vector<double> const& ambient = material.getAmbientColor();
    if (ambient.size() < 3)
        return 0.0f;
    double const a = luminance(ambient);
    if (!(a > 0.0))
        return 0.0f;
    std::vector<double> const& diffuse = material.getDiffuseColor();
    double const d = diffuse.size() < 3 ? 0.0 : luminance(diffuse);
    return std::clamp(static_cast<float>(a / d), 0.0f, 1.0f);
}

float transparencyOf(koltx::Material const& material) {
    return static_cast<float>(std::clamp(1.0 - material.getOpacity(), 0.0, 1.0));
}

bool hasValidTexture(koltx::Material const& material) {
    for (auto const& texture : material.getDiffuseMap()) {
        if (texture && texture->isValid())
            return true;
    }
    return false;
}

} // namespace

BasicMaterialAppearanceMemberNode::BasicMaterialAppearanceMemberNode(
    std::shared_ptr<koltx::Material> const& material)
    : AppearanceMemberNode(material->getName()), diffuseColor(material->getDiffuseColor()),
      emissiveColor(material->getEmissiveColor()), specularColor(material->getSpecularColor()),
      shininess(static_cast<float>(std::clamp(material->getShininess(), 0.0, 1.0))),
      transparency(transparencyOf(*material)), ambientIntensity(ambientIntensityOf(*material)) {}

bool BasicMaterialAppearanceMemberNode::matches(
    std::shared_ptr<koltx::Material> const& material) const {
    if (!material || hasValidTexture(*material))
        return false;
    if (material->getName() != name)
        return false;
    // Vector equality compares entries as doubles, so a NaN matches nothing.
    if (material->getDiffuseColor() != diffuseColor ||
        material->getEmissiveColor() != emissiveColor ||
        material->getSpecularColor() != specularColor)
        return false;
    // The stored float against the raw value: a shininess that a float can't hold, or one
    // beyond the limits, never matches, and such a material gets a member of its own.
    if (static_cast<double>(shininess) != material->getShininess())
        return false;
    return transparency == transparencyOf(*material) &&
           ambientIntensity == ambientIntensityOf(*material);
}

void BasicMaterialAppearanceMemberNode::addTarget(std::wstring const& polygonId,
                                                  std::wstring const&,
                                                  std::shared_ptr<koltx::Mesh> const&,
                                                  std::uint32_t) {
    targets.insert(polygonId);
}

void BasicMaterialAppearanceMemberNode::addTarget(
    std::shared_ptr<PolygonNode const> const& polygon) {
    targets.insert(polygon->polygonId());
}

void BasicMaterialAppearanceMemberNode::write(XmlWriter& writer) {
    writer.startElement(writer.version < 3 ? L"app:surfaceDataMember" : L"app:surfaceData");
    writer.startElement(L"app:X3DMaterial");
    writer.writeTextElement(L"app:ambientIntensity", static_cast<double>(ambientIntensity));
    writer.writeColorElement(L"app:diffuseColor", diffuseColor);
    writer.writeColorElement(L"app:emissiveColor", emissiveColor);
    writer.writeColorElement(L"app:specularColor", specularColor);
    writer.writeTextElement(L"app:shininess", static_cast<double>(shininess));
    writer.writeTextElement(L"app:transparency", static_cast<double>(transparency));
    for (std::wstring const& target : targets)
        writer.writeTextElement(L"app:target", target);
    writer.endElement();
    writer.endElement();
}

} // namespace gml
