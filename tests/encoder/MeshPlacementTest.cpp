#include "EncoderRun.h"

#include <encoder/MeshDescent.h>
#include <encoder/ShapeMapping.h>

#include <gml/BuildingTypeNode.h>
#include <gml/GeometryNode.h>
#include <gml/PolygonNode.h>
#include <gml/RootNode.h>
#include <gml/TransportationTypeNode.h>

#include <koltx/DefaultNamePreparator.h>
#include <koltx/EncodePreparator.h>

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

std::size_t polygonCount(NodePtr const& node) {
    std::size_t n = dynamic_cast<gml::PolygonNode*>(node.get()) != nullptr ? 1 : 0;
    for (auto const& child : node->children)
        n += polygonCount(child);
    return n;
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

} // namespace

TEST(MeshDescent, MakesOneGeometryWithAPolygonPerFaceAndReusesNodesById) {
    Placement p;
    auto const mesh = enctest::makeMesh(L"m", squares(2));
    p.place(L"A[a]\\gml:MultiSurface[m]\\", mesh);
    ASSERT_EQ(1u, p.top->children.size());
    auto geometry = std::dynamic_pointer_cast<gml::GeometryNode>(p.top->children[0]);
    ASSERT_TRUE(geometry);
    EXPECT_EQ(L"gml:MultiSurface", geometry->tag);
    EXPECT_EQ(L"m", geometry->id);
    EXPECT_TRUE(geometry->writeId);
    ASSERT_EQ(2u, geometry->children.size());
    for (std::uint32_t f = 0; f < 2; ++f) {
        auto polygon = std::dynamic_pointer_cast<gml::PolygonNode>(geometry->children[f]);
        ASSERT_TRUE(polygon);
        EXPECT_EQ(f, polygon->faceIndex);
        EXPECT_EQ(L"gml:MultiSurface", polygon->surfaceTag);
        EXPECT_EQ(36u, polygon->id.size());
    }

    // The same path again adds nothing: polygons come only with a new geometry element.
    p.place(L"A[a]\\gml:MultiSurface[m]\\", mesh);
    EXPECT_EQ(2u, polygonCount(p.top));
    // Another geometry id at that level is a second geometry node.
    p.place(L"A[a]\\gml:MultiSurface[m2]\\", mesh);
    EXPECT_EQ(2u, p.top->children.size());
    EXPECT_EQ(4u, polygonCount(p.top));
    EXPECT_EQ((std::set<std::wstring>{L"gml"}), p.document.usedPrefixes);
}

TEST(MeshDescent, PolygonsGoToTheInnermostGeometryAndPlainStepsFollowThem) {
    Placement p;
    auto const mesh = enctest::makeMesh(L"m", squares(1));
    p.place(L"A[a]\\gml:Solid[s]\\gml:CompositeSurface[c]\\", mesh);
    auto solid = p.top->children.at(0);
    EXPECT_EQ(L"gml:Solid", solid->tag);
    ASSERT_EQ(1u, solid->children.size());
    EXPECT_EQ(L"gml:CompositeSurface", solid->children[0]->tag);
    EXPECT_EQ(1u, solid->children[0]->children.size());

    Placement q;
    q.place(L"A[a]\\gml:multisurface[m]\\gml:surfaceMember[]\\", mesh);
    auto multi = q.top->children.at(0);
    EXPECT_EQ(L"gml:MultiSurface", multi->tag);
    ASSERT_EQ(2u, multi->children.size());
    auto polygon = std::dynamic_pointer_cast<gml::PolygonNode>(multi->children[0]);
    ASSERT_TRUE(polygon);
    // The surface tag stays as the path has it.
    EXPECT_EQ(L"gml:multisurface", polygon->surfaceTag);
    EXPECT_EQ(L"gml:surfaceMember", multi->children[1]->tag);
    EXPECT_FALSE(std::dynamic_pointer_cast<gml::GeometryNode>(multi->children[1]));

    // Without any geometry element the faces have nowhere to go.
    Placement r;
    r.place(L"A[a]\\core:boundary[b]\\", mesh);
    EXPECT_EQ(L"core:boundary", r.top->children.at(0)->tag);
    EXPECT_EQ(0u, polygonCount(r.top));
}

TEST(MeshDescent, DropsBranchesAboveTheLevelOfDetail) {
    auto const mesh = enctest::makeMesh(L"m", squares(1));
    Placement p(1);
    p.place(L"A[a]\\bldg:lod2Solid[]\\gml:Solid[s]\\", mesh);
    EXPECT_TRUE(p.top->children.empty());
    // The prefix of the dropped step was seen, that of the geometry never.
    EXPECT_EQ((std::set<std::wstring>{L"bldg"}), p.document.usedPrefixes);

    Placement zero(0);
    zero.place(L"A[a]\\core:lod0MultiSurface[x]\\gml:MultiSurface\\", mesh);
    EXPECT_EQ(1u, polygonCount(zero.top));

    Placement bad;
    EXPECT_THROW(bad.place(L"A[a]\\bldg:lodSurface[]\\gml:Solid[s]\\", mesh),
                 std::invalid_argument);
    EXPECT_TRUE(bad.top->children.empty());
}

TEST(MeshDescent, MeshWithoutFacesStillExportsItsMaterials) {
    Placement p;
    koltx::MeshBuilder builder;
    builder.setName(L"empty");
    builder.addMaterial(enctest::makeMaterial(L"red", {1, 0, 0}));
    auto const empty = builder.createSharedAndReset(nullptr);
    p.place(L"A[a]\\gml:MultiSurface[m]\\", empty);
    EXPECT_EQ(1u, p.top->children.size());
    EXPECT_EQ(0u, polygonCount(p.top));
    EXPECT_EQ(1u, p.document.appearanceMembers.size());
}

TEST(ShapeMapping, PathlessMeshesMeetInOneConstruction) {
    auto const groups =
        groupsOf({{enctest::makeMesh(L"first", squares(1)), enctest::makeMesh(L"", squares(1))}});
    ASSERT_EQ(1u, groups.size());
    ASSERT_EQ(1u, groups[0].size());
    auto const& top = groups[0][0];
    EXPECT_EQ(L"con:OtherConstruction", top->tag);
    EXPECT_FALSE(top->writeId);
    ASSERT_EQ(2u, top->children.size());
    for (auto const& boundary : top->children) {
        EXPECT_EQ(L"core:boundary", boundary->tag);
        auto const& surface = boundary->children.at(0);
        EXPECT_EQ(L"gen:GenericThematicSurface", surface->tag);
        auto const& lod = surface->children.at(0);
        EXPECT_EQ(L"core:lod0MultiSurface", lod->tag);
        auto const& geometry = lod->children.at(0);
        EXPECT_EQ(L"gml:MultiSurface", geometry->tag);
        EXPECT_TRUE(geometry->id.empty());
        EXPECT_FALSE(geometry->writeId);
        EXPECT_EQ(1u, geometry->children.size());
    }
}

TEST(ShapeMapping, TopLevelNodesByIdWithTheClassOfTheFirstTag) {
    std::wstring const path = L"bldg:Building[b1]\\bldg:lod2Solid[]\\gml:Solid[s1]\\";
    auto const groups =
        groupsOf({{enctest::makeMesh(path, squares(1)),
                   enctest::makeMesh(L"trans:Road[b1]\\trans:lod2MultiSurface[]\\gml:"
                                     L"MultiSurface[x]\\",
                                     squares(1)),
                   enctest::makeMesh(L"trans:Road[r1]\\trans:lod2MultiSurface[]\\gml:"
                                     L"MultiSurface[y]\\",
                                     squares(1)),
                   enctest::makeMesh(L"Bldg:Building[c]\\gml:MultiSurface[z]\\", squares(1)),
                   enctest::makeMesh(L"bldg\\gml:MultiSurface[w]\\", squares(1))}});
    ASSERT_EQ(1u, groups.size());
    auto const& group = groups[0];
    ASSERT_EQ(4u, group.size());
    EXPECT_TRUE(std::dynamic_pointer_cast<gml::BuildingTypeNode>(group[0]));
    EXPECT_EQ(L"bldg:Building", group[0]->tag);
    // The road with the building's id went into the building, and its step without id into the
    // building's first step without id, whatever the tags.
    ASSERT_EQ(1u, group[0]->children.size());
    EXPECT_EQ(2u, group[0]->children[0]->children.size());
    EXPECT_TRUE(std::dynamic_pointer_cast<gml::TransportationTypeNode>(group[1]));
    // Case-sensitive prefixes: "Bldg" is no building.
    EXPECT_FALSE(std::dynamic_pointer_cast<gml::BuildingTypeNode>(group[2]));
    EXPECT_TRUE(std::dynamic_pointer_cast<gml::RootNode>(group[2]));
    EXPECT_TRUE(std::dynamic_pointer_cast<gml::BuildingTypeNode>(group[3]));
    for (auto const& node : group)
        EXPECT_FALSE(node->writeId);

    // One component only: an empty node whose faces are lost.
    auto const single = groupsOf({{enctest::makeMesh(L"wall\\", squares(1))}});
    ASSERT_EQ(1u, single.at(0).size());
    EXPECT_EQ(L"wall", single[0][0]->tag);
    EXPECT_TRUE(single[0][0]->children.empty());
}

TEST(ShapeMapping, TheFirstShapeVotesOnTheVersion) {
    std::optional<std::int32_t> version;
    std::set<std::wstring> prefixes;
    auto const v2 = L"bldg:Building[b]\\bldg:lod2MultiSurface[]\\gml:MultiSurface[m]\\";
    auto const v3 = L"bldg:Building[b]\\core:boundary[]\\con:WallSurface[w]\\";
    groupsOf({{enctest::makeMesh(v2, squares(1))}, {enctest::makeMesh(v3, squares(1))}}, &version,
             &prefixes);
    EXPECT_EQ(2, version.value_or(0));
    EXPECT_EQ((std::set<std::wstring>{L"bldg", L"con", L"core", L"gml"}), prefixes);

    groupsOf({{enctest::makeMesh(v2, squares(1)), enctest::makeMesh(v3, squares(1))}}, &version);
    EXPECT_EQ(3, version.value_or(0));

    auto const groups = groupsOf({{}, {enctest::makeMesh(v2, squares(1))}}, &version);
    EXPECT_FALSE(version.has_value());
    // A shape without anything still has its group.
    ASSERT_EQ(2u, groups.size());
    EXPECT_TRUE(groups[0].empty());
    EXPECT_EQ(1u, groups[1].size());
}

TEST(ShapeMapping, EqualIdsInTwoShapesMakeTwoNodes) {
    auto const path = L"bldg:Building[b]\\bldg:lod2MultiSurface[]\\gml:MultiSurface[m]\\";
    auto const groups = groupsOf({{enctest::makeMesh(path, squares(1))},
                                  {enctest::makeMesh(path, squares(1))},
                                  {enctest::makeMesh(L"x", squares(1))},
                                  {enctest::makeMesh(L"y", squares(1))}});
    ASSERT_EQ(4u, groups.size());
    EXPECT_NE(groups[0][0], groups[1][0]);
    EXPECT_EQ(1u, polygonCount(groups[1][0]));
    EXPECT_NE(groups[2][0]->id, groups[3][0]->id);
}
