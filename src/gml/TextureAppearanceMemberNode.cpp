#include "gml/TextureAppearanceMemberNode.h"

#include "gml/XmlWriter.h"

#include <koltx/Material.h>
#include <koltx/Mesh.h>
#include <koltx/Texture.h>

#include <stdexcept>

namespace gml {

TextureAppearanceMemberNode::TextureAppearanceMemberNode(std::wstring_view name,
                                                         std::shared_ptr<koltx::Texture> texture,
                                                         std::wstring_view imageUri)
    : AppearanceMemberNode(name), texture(std::move(texture)), imageUri(imageUri) {}

bool TextureAppearanceMemberNode::matches(std::shared_ptr<koltx::Material> const& material) const {
    if (!material)
        return false;
    for (auto const& candidate : material->getDiffuseMap()) {
        if (candidate && candidate->isValid())
            return texture && *texture == *candidate;
    }
    return false;
}

TextureTarget TextureAppearanceMemberNode::takeCoordinates(std::shared_ptr<koltx::Mesh> const& mesh,
                                                           std::uint32_t faceIndex) {
    if (!mesh || faceIndex >= mesh->getFaceCount())
        throw std::out_of_range("Texture target face is not in its mesh.");
    std::vector<double> const& coords = mesh->getUVCoords(0);
    std::uint32_t const* indices = mesh->getFaceUVIndices(faceIndex, 0);
    const std::uint32_t count = mesh->getFaceUVCount(faceIndex, 0);
    TextureTarget target;
    target.first = uvs.size();
    target.count = count * 2;
    for (std::uint32_t i = 0; i < count; ++i) {
        const std::size_t at = static_cast<std::size_t>(indices[i]) * 2;
        uvs.push_back(coords[at]);
        uvs.push_back(coords[at + 1]);
    }
    return target;
}

void TextureAppearanceMemberNode::addTarget(std::wstring const& polygonId,
                                            std::wstring const& ringId,
                                            std::shared_ptr<koltx::Mesh> const& mesh,
                                            std::uint32_t faceIndex) {
    TextureTarget target = takeCoordinates(mesh, faceIndex);
    target.textIndex = static_cast<std::uint32_t>(textIds.size());
    textIds.emplace_back(polygonId, ringId);
    targets.push_back(std::move(target));
}

void TextureAppearanceMemberNode::addTarget(std::shared_ptr<PolygonNode const> const& polygon) {
    TextureTarget target = takeCoordinates(polygon->mesh, polygon->faceIndex);
    target.polygon = polygon;
    targets.push_back(std::move(target));
}

void TextureAppearanceMemberNode::write(XmlWriter& writer) {
    bool const modern = writer.version >= 3;
    writer.startElement(modern ? L"app:surfaceData" : L"app:surfaceDataMember");
    writer.startElement(L"app:ParameterizedTexture");
    writer.writeTextElement(L"app:imageURI", imageUri);
    writer.writeTextElement(L"app:wrapMode", L"wrap");
    // One pair of id buffers for every target.
    std::wstring polygonId;
    std::wstring ringId;
    for (TextureTarget const& target : targets) {
        if (target.polygon) {
            polygonId.clear();
            target.polygon->appendPolygonId(polygonId);
            ringId.clear();
            target.polygon->appendRingId(ringId);
        } else {
            polygonId = textIds[target.textIndex].first;
            ringId = textIds[target.textIndex].second;
        }
        double const* values = uvs.data() + target.first;
        if (modern) {
            writer.startElement(L"app:textureParameterization");
            writer.startElement(L"app:TextureAssociation");
            writer.writeTextElement(L"app:target", polygonId);
            writer.startElement(L"app:textureParameterization");
            writer.startElement(L"app:TexCoordList");
            writer.writeCoordinatesElement(L"app:textureCoordinates", values, target.count, 2,
                                           std::wstring_view(), std::wstring_view());
            writer.writeTextElement(L"app:ring", ringId);
            for (int i = 0; i < 4; ++i)
                writer.endElement();
        } else {
            writer.startElement(L"app:target", std::wstring_view(), L"uri", polygonId);
            writer.startElement(L"app:TexCoordList");
            writer.writeCoordinatesElement(L"app:textureCoordinates", values, target.count, 2,
                                           L"ring", ringId);
            writer.endElement();
            writer.endElement();
        }
    }
    writer.endElement();
    writer.endElement();
}

} // namespace gml
