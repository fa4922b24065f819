#pragma once

#include "gml/AppearanceMemberNode.h"

#include <vector>

namespace koltx {
class Texture;
}

namespace gml {

// One polygon that a texture covers, with the texture coordinates of its vertices.
struct TextureTarget {
    std::wstring ringId;
    std::wstring polygonId;
    std::vector<double> uvs;
};

// An "app:ParameterizedTexture" with the texture coordinates of every polygon that uses it.
class TextureAppearanceMemberNode : public AppearanceMemberNode {
public:
    TextureAppearanceMemberNode(std::wstring_view name, std::shared_ptr<koltx::Texture> texture,
                                std::wstring_view imageUri);

    // Equal by the content of the material's first valid texture; nothing else counts.
    bool matches(std::shared_ptr<koltx::Material> const& material) const override;
    // Takes the face's coordinates of UV set 0.
    void addTarget(std::wstring const& polygonId, std::wstring const& ringId,
                   std::shared_ptr<koltx::Mesh> const& mesh, std::uint32_t faceIndex) override;
    void write(XmlWriter& writer) override;

    std::shared_ptr<koltx::Texture> texture;
    std::wstring imageUri;
    std::vector<TextureTarget> targets;
};

} // namespace gml
