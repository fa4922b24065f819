#include "encoder/MeshDescent.h"

#include "encoder/AppearanceExport.h"
#include "encoder/LodFilter.h"

#include <gml/GeometryNode.h>
#include <gml/Identifiers.h>
#include <gml/PolygonNode.h>
#include <vocabulary/GmlGeometryTags.h>

#include <koltx/Mesh.h>

#include <vector>

namespace {

std::shared_ptr<gml::CityElementNode> findChild(gml::CityElementNode const& parent,
                                                std::wstring_view id) {
    for (auto const& child : parent.children)
        if (child->hasId(id))
            return child;
    return nullptr;
}

// True if a component behind the current one is a geometry element too.
bool hasLaterGeometry(PathIterator iterator) {
    for (++iterator; !iterator.atEnd(); ++iterator)
        if (isGmlGeometryTag(iterator.tag))
            return true;
    return false;
}

void addPolygons(CityModelDocument& document, gml::CityElementNode& node, std::wstring_view tag,
                 std::shared_ptr<koltx::Mesh> const& mesh) {
    auto const& materials = mesh->getMaterials();
    std::vector<std::shared_ptr<gml::AppearanceMemberNode>> members(materials.size());
    for (std::size_t i = 0; i < materials.size(); ++i)
        members[i] = getAppearanceMember(document, materials[i]);

    auto const& faceMaterials = mesh->getFaceMaterialIndices();
    auto const faceCount = static_cast<std::int32_t>(mesh->getFaceCount());
    node.children.reserve(node.children.size() + mesh->getFaceCount());
    for (std::int32_t f = 0; f < faceCount; ++f) {
        auto const face = static_cast<std::uint32_t>(f);
        auto polygon = std::make_shared<gml::PolygonNode>(mesh, gml::newUuid(), face, tag);
        node.addChild(polygon);
        // The host keeps every face's material index within the mesh's materials.
        std::uint32_t const materialIndex = face < faceMaterials.size() ? faceMaterials[face] : 0;
        if (materialIndex >= members.size())
            continue;
        auto const& member = members[materialIndex];
        if (member)
            member->addTarget(polygon);
    }
}

} // namespace

void usePrefix(CityModelDocument& document, std::wstring_view prefix) {
    for (auto const& known : document.usedPrefixes)
        if (known == prefix)
            return;
    document.usedPrefixes.emplace(prefix);
}

void addMesh(CityModelDocument& document, std::shared_ptr<gml::CityElementNode> const& parent,
             PathIterator& iterator, std::shared_ptr<koltx::Mesh> const& mesh, bool pathGiven) {
    std::wstring_view const tag = iterator.tag;
    std::wstring_view const id = iterator.id;
    auto const colon = tag.find(L':');
    if (colon != std::wstring_view::npos)
        usePrefix(document, tag.substr(0, colon));

    if (auto child = findChild(*parent, id)) {
        ++iterator;
        addMesh(document, child, iterator, mesh, pathGiven);
        return;
    }

    std::shared_ptr<gml::CityElementNode> node;
    if (!isGmlGeometryTag(tag)) {
        if (!lodWithinLimit(tag, static_cast<std::uint32_t>(document.levelOfDetail)))
            return;
        node = std::make_shared<gml::CityElementNode>(id, false, tag);
    } else {
        node =
            std::make_shared<gml::GeometryNode>(id, pathGiven, canonicalGmlGeometryTag(tag), mesh);
        if (!hasLaterGeometry(iterator))
            addPolygons(document, *node, tag, mesh);
    }
    if (node->tag.empty())
        return;

    ++iterator;
    if (!iterator.atEnd())
        addMesh(document, node, iterator, mesh, pathGiven);
    parent->addChild(node);
}
