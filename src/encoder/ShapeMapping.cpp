#include "encoder/ShapeMapping.h"

#include "encoder/MeshDescent.h"

#include <gml/BridgeTypeNode.h>
#include <gml/BuildingTypeNode.h>
#include <gml/Identifiers.h>
#include <gml/ReliefComponentType.h>
#include <gml/RootNode.h>
#include <gml/TransportationTypeNode.h>
#include <vocabulary/PathIterator.h>
#include <vocabulary/PathNormalizer.h>

#include <kolt/AttributeMap.h>
#include <koltx/EncodePreparator.h>
#include <koltx/Geometry.h>

#include <string_view>
#include <unordered_map>
#include <vector>

namespace {

std::wstring_view prefixOf(std::wstring_view tag) {
    auto const colon = tag.find(L':');
    return colon == std::wstring_view::npos ? tag : tag.substr(0, colon);
}

std::shared_ptr<gml::CityElementNode> makeTopLevelNode(gml::AttributeMap const& attributes,
                                                       std::shared_ptr<gml::Envelope> envelope,
                                                       std::wstring_view id,
                                                       std::wstring_view tag) {
    auto const prefix = prefixOf(tag);
    if (prefix == L"trans")
        return std::make_shared<gml::TransportationTypeNode>(attributes, envelope, id, false, tag);
    if (prefix == L"dem")
        return std::make_shared<gml::ReliefComponentType>(attributes, envelope, id, false, tag);
    if (prefix == L"bldg")
        return std::make_shared<gml::BuildingTypeNode>(attributes, envelope, id, false, tag);
    if (prefix == L"brid")
        return std::make_shared<gml::BridgeTypeNode>(attributes, envelope, id, false, tag);
    return std::make_shared<gml::RootNode>(attributes, envelope, id, false, tag);
}

struct ShapeState {
    CityModelDocument& document;
    std::map<std::wstring, std::wstring> const& attributes;
    std::shared_ptr<gml::Envelope> const& envelope;
    std::uint64_t initialShapeIndex;
    std::wstring constructionId;
    CityModelDocument::NodeGroup group;
    // The first node of `group` with each id, as a scan from the front finds it; a shape can
    // hold a whole city, so a scan per mesh would be quadratic. Views into the nodes' ids.
    std::unordered_map<std::wstring_view, std::size_t> firstById;
};

void placeMesh(ShapeState& state, std::shared_ptr<koltx::Mesh> const& mesh) {
    CityModelDocument& document = state.document;
    // The views below point into the mesh's own name, or into the default path made here.
    std::wstring_view path = mesh->getName();
    std::wstring defaultPath;
    bool pathGiven = true;
    if (path.find(L'\\') != std::wstring_view::npos) {
        if (state.initialShapeIndex == 0) {
            int found = 0;
            if (detectCityGMLVersion(path, &found, document.version.value_or(0)))
                document.version = found;
        }
    } else {
        pathGiven = false;
        std::wstring const u1 = gml::newUuidString();
        std::wstring const u2 = gml::newUuidString();
        std::wstring const u3 = gml::newUuidString();
        defaultPath = defaultMeshPath(state.constructionId, u1, u2, u3);
        path = defaultPath;
    }

    PathIterator iterator(path);
    if (iterator.tag.find(L':') != std::wstring_view::npos)
        usePrefix(document, prefixOf(iterator.tag));

    auto const known = state.firstById.find(iterator.id);
    if (known != state.firstById.end()) {
        PathIterator next = iterator;
        ++next;
        addMesh(document, state.group[known->second], next, mesh, pathGiven);
        return;
    }

    if (!state.attributes.empty())
        usePrefix(document, L"gen");
    bool const first = state.group.empty();
    gml::AttributeMap const noAttributes;
    std::shared_ptr<gml::CityElementNode> node = makeTopLevelNode(
        first ? state.attributes : noAttributes,
        first ? state.envelope : std::shared_ptr<gml::Envelope>(), iterator.id, iterator.tag);
    PathIterator next = iterator;
    ++next;
    addMesh(document, node, next, mesh, pathGiven);
    usePrefix(document, L"core");
    state.group.push_back(node);
    state.firstById.emplace(state.group.back()->id, state.group.size() - 1);
}

} // namespace

std::wstring defaultMeshPath(std::wstring const& constructionId, std::wstring const& u1,
                             std::wstring const& u2, std::wstring const& u3) {
    std::wstring path;
    path.reserve(160);
    path += L"con:OtherConstruction[";
    path += constructionId;
    path += L"]\\core:boundary[";
    path += u1;
    path += L"]\\gen:GenericThematicSurface[";
    path += u2;
    path += L"]\\core:lod0MultiSurface[";
    path += u3;
    path += L"]\\gml:MultiSurface\\";
    return path;
}

void addInitialShape(CityModelDocument& document,
                     std::map<std::wstring, std::wstring> const& attributes,
                     std::shared_ptr<gml::Envelope> const& envelope,
                     std::uint64_t initialShapeIndex, kolt::AttributeMap const* options) {
    bool const mergeVertices = options->getBool(L"mergeVertices", nullptr);
    double const precision = options->getFloat(L"vertexPrecision", nullptr);

    koltx::EncodePreparator::PreparationFlags flags;
    flags.instancing(false)
        .meshMerging(static_cast<koltx::MeshMerging::Action>(0))
        .mergeVertices(mergeVertices)
        .mergeToleranceVertices(static_cast<float>(precision))
        .cleanupVertexNormals(false)
        .cleanupUVs(false)
        .processHoles(static_cast<koltx::HoleProcessor::Action>(1));

    std::vector<koltx::EncodePreparator::FinalizedInstance> instances;
    document.preparator->fetchInstances(instances, flags, 0);

    ShapeState state{document, attributes, envelope, initialShapeIndex, gml::newUuidString(),
                     {},       {}};
    for (auto const& instance : instances)
        for (auto const& mesh : instance.getGeometry()->getMeshes())
            placeMesh(state, mesh);

    document.memberGroups.push_back(state.group);
}
