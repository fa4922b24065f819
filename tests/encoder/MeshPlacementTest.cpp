#include "EncoderTestSupport.h"

#include <encoder/MeshDescent.h>
#include <encoder/ShapeMapping.h>

#include <gml/BuildingTypeNode.h>
#include <gml/GeometryNode.h>
#include <gml/PolygonNode.h>
#include <gml/RootNode.h>
#include <gml/TransportationTypeNode.h>

#include <koltx/DefaultNamePreparator.h>
#include <koltx/EncodePreparator.h>

#include <Golden.h>
#include <gtest/gtest.h>

#include <stdexcept>

namespace {

using NodePtr = std::shared_ptr<gml::CityElementNode>;

// A document on its own, for placing meshes below a node by hand.
struct Placement {
    explicit Placement(int levelOfDetail = 4)
        : names(L"_", L"_"),
          document(levelOfDetail, preparator, names, names.newNamespace(), &outputs) {}

    NodePtr place(std::wstring const& path, std::shared_ptr<koltx::Mesh> const& mesh) {
        PathIterator iterator(path);
        ++iterator; // the first component is the top-level node
        addMesh(document, top, iterator, mesh, true);
        return top;
    }

    koltx::MemoryOutputCallbacks outputs;
    std::shared_ptr<koltx::EncodePreparator> preparator;
    koltx::DefaultNamePreparator names;
    CityModelDocument document;
    NodePtr top = std::make_shared<gml::RootNode>(gml::AttributeMap{}, nullptr, L"a", false, L"A");
};

std::vector<enctest::Square> squares(int n) {
    std::vector<enctest::Square> out;
    for (int i = 0; i < n; ++i)
        out.push_back({static_cast<double>(i), 0, 0, 1, 0});
    return out;
}

// The document's top-level nodes, after one generation with these meshes in one shape each.
std::vector<CityModelDocument::NodeGroup>
groupsOf(std::vector<std::vector<std::shared_ptr<koltx::Mesh>>> const& shapes,
         std::optional<std::int32_t>* version = nullptr,
         std::set<std::wstring>* prefixes = nullptr) {
    std::vector<std::shared_ptr<koltx::InitialShape const>> initialShapes;
    for (auto const& meshes : shapes) {
        std::vector<std::shared_ptr<koltx::Shape>> leaves;
        if (!meshes.empty())
            leaves.push_back(enctest::makeLeaf(enctest::makeGeometry(meshes)));
        initialShapes.push_back(enctest::makeInitialShape(leaves));
    }
    koltx::MemoryOutputCallbacks outputs;
    auto const options = enctest::validatedOptions(nullptr);
    CityGMLEncoder* encoder = nullptr;
    enctest::runEncoder(initialShapes, options.get(), &outputs, &encoder);
    std::unique_ptr<CityGMLEncoder> owner(encoder);
    if (version != nullptr)
        *version = encoder->getDocument()->version;
    if (prefixes != nullptr)
        *prefixes = encoder->getDocument()->usedPrefixes;
    return encoder->getDocument()->memberGroups;
}

std::string prefixesOf(std::set<std::wstring> const& prefixes) {
    std::string text = "prefixes:";
    for (auto const& prefix : prefixes)
        text += " " + kolt::StringUtils::toUTF8(prefix);
    return text + "\n";
}

// One generation with one shape per list of mesh names (one square each): its version, prefixes
// and nodes.
std::string generation(std::vector<std::vector<std::wstring>> const& shapes) {
    std::vector<std::vector<std::shared_ptr<koltx::Mesh>>> meshes;
    for (auto const& names : shapes) {
        meshes.emplace_back();
        for (auto const& name : names)
            meshes.back().push_back(enctest::makeMesh(name, squares(1)));
    }
    std::optional<std::int32_t> version;
    std::set<std::wstring> prefixes;
    std::string text;
    for (auto const& group : groupsOf(meshes, &version, &prefixes)) {
        text += "shape\n";
        for (auto const& node : group)
            text += enctest::describe(node, 1);
    }
    return "version " + (version ? std::to_string(*version) : std::string("none")) + ", " +
           prefixesOf(prefixes) + text;
}

std::wstring const building2 = L"bldg:Building[b]\\bldg:lod2MultiSurface[]\\gml:MultiSurface[m]\\";
std::wstring const building3 = L"bldg:Building[b]\\core:boundary[]\\con:WallSurface[w]\\";

} // namespace

// Meshes placed below one node by hand, at the level of detail given; every case's tree stands
// in the golden file.
TEST(MeshDescent, GeometriesPolygonsAndPlainStepsByPath) {
    auto const two = enctest::makeMesh(L"m", squares(2));
    auto const one = enctest::makeMesh(L"m", squares(1));
    koltx::MeshBuilder builder;
    builder.addMaterial(enctest::makeMaterial(L"red", {1, 0, 0}));
    auto const empty = builder.createSharedAndReset(nullptr);
    struct Case {
        char const* name;
        int levelOfDetail;
        std::vector<std::pair<std::wstring, std::shared_ptr<koltx::Mesh>>> meshes;
    };
    std::vector<Case> const cases = {
        {"one polygon per face; the same path again adds nothing, another id a second geometry",
         4,
         {{L"A[a]\\gml:MultiSurface[m]\\", two},
          {L"A[a]\\gml:MultiSurface[m]\\", two},
          {L"A[a]\\gml:MultiSurface[m2]\\", two}}},
        {"polygons go to the innermost geometry",
         4,
         {{L"A[a]\\gml:Solid[s]\\gml:CompositeSurface[c]\\", one}}},
        {"plain steps follow the polygons; the surface tag stays as the path has it",
         4,
         {{L"A[a]\\gml:multisurface[m]\\gml:surfaceMember[]\\", one}}},
        {"without any geometry element the faces have nowhere to go",
         4,
         {{L"A[a]\\core:boundary[b]\\", one}}},
        {"a branch above the level of detail is dropped, its prefix seen",
         1,
         {{L"A[a]\\bldg:lod2Solid[]\\gml:Solid[s]\\", one}}},
        {"level of detail 0", 0, {{L"A[a]\\core:lod0MultiSurface[x]\\gml:MultiSurface\\", one}}},
        {"a mesh without faces still exports its materials",
         4,
         {{L"A[a]\\gml:MultiSurface[m]\\", empty}}},
    };
    std::string text;
    for (auto const& c : cases) {
        Placement p(c.levelOfDetail);
        for (auto const& [path, mesh] : c.meshes)
            p.place(path, mesh);
        text += std::string("## ") + c.name + "\n" + enctest::describe(p.top) +
                prefixesOf(p.document.usedPrefixes) +
                "appearance members: " + std::to_string(p.document.appearanceMembers.size()) + "\n";
    }
    EXPECT_TRUE(testsupport::matchesGolden("encoder/mesh_descent.txt", text));

    Placement bad;
    EXPECT_THROW(bad.place(L"A[a]\\bldg:lodSurface[]\\gml:Solid[s]\\", one), std::invalid_argument);
    EXPECT_TRUE(bad.top->children.empty());
}

// Top-level nodes of whole generations: classes by the first tag, nodes found by id, pathless
// meshes in one construction, the first shape's vote on the version.
TEST(ShapeMapping, GenerationsAsTheirNodeTrees) {
    std::vector<std::pair<char const*, std::vector<std::vector<std::wstring>>>> const cases = {
        {"pathless meshes meet in one construction", {{L"first", L""}}},
        {"top-level nodes by id with the class of the first tag",
         {{L"bldg:Building[b1]\\bldg:lod2Solid[]\\gml:Solid[s1]\\",
           L"trans:Road[b1]\\trans:lod2MultiSurface[]\\gml:MultiSurface[x]\\",
           L"trans:Road[r1]\\trans:lod2MultiSurface[]\\gml:MultiSurface[y]\\",
           L"Bldg:Building[c]\\gml:MultiSurface[z]\\", L"bldg\\gml:MultiSurface[w]\\"}}},
        {"one component only: an empty node whose faces are lost", {{L"wall\\"}}},
        {"the first shape votes 2.0", {{building2}, {building3}}},
        {"the first shape votes 3.0", {{building2, building3}}},
        {"a shape without meshes has no vote but its group", {{}, {building2}}},
        {"equal ids in two shapes make two nodes", {{building2}, {building2}, {L"x"}, {L"y"}}},
    };
    std::string text;
    for (auto const& [name, shapes] : cases)
        text += std::string("## ") + name + "\n" + generation(shapes);
    EXPECT_TRUE(testsupport::matchesGolden("encoder/shape_mapping.txt", text));
    // Made-up ids read the same once masked: they must differ all the same.
    auto const groups =
        groupsOf({{enctest::makeMesh(L"x", squares(1))}, {enctest::makeMesh(L"y", squares(1))}});
    EXPECT_NE(groups.at(0).at(0)->id, groups.at(1).at(0)->id);
}
