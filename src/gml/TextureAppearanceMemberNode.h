#pragma once

#include "gml/AppearanceMemberNode.h"

#include <vector>

namespace koltx {
class Texture;
}

namespace gml {

// One polygon that a texture covers. Its texture coordinates are `count` values of the member's
// `uvs` from `first`. A polygon of the tree gives its ids when they are written; ids given as
// text are kept in the member's `textIds`.
struct TextureTarget {
    std::shared_ptr<PolygonNode const> polygon;
    std::size_t first = 0;
    std::uint32_t count = 0;
    std::uint32_t textIndex = 0;
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
    void addTarget(std::shared_ptr<PolygonNode const> const& polygon) override;
    void write(XmlWriter& writer) override;

    std::shared_ptr<koltx::Texture> texture;
    std::wstring imageUri;
    std::vector<TextureTarget> targets;
    // The texture coordinates of all targets, back to back: one block for a million faces.
    std::vector<double> uvs;
    // Polygon and ring id of the targets given as text.
    std::vector<std::pair<std::wstring, std::wstring>> textIds;

private:
    // Appends the face's coordinates of UV set 0 to `uvs` and returns the target for them.
    TextureTarget takeCoordinates(std::shared_ptr<koltx::Mesh> const& mesh,
                                  std::uint32_t faceIndex);
};

} // namespace gml
