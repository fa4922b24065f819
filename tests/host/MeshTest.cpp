#include "koltx/Mesh.h"
#include "koltx/MaterialBuilder.h"
#include "koltx/MeshBuilder.h"

#include "../../host/src/meshes/MeshData.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

using koltx::MeshBuilder;

namespace {

std::vector<uint32_t> faceVertices(koltx::Mesh const& mesh, uint32_t face) {
    auto const* indices = mesh.getFaceVertexIndices(face);
    return std::vector<uint32_t>(indices, indices + mesh.getFaceVertexCount(face));
}

std::vector<uint32_t> faceUVs(koltx::Mesh const& mesh, uint32_t face, uint32_t set) {
    auto const* indices = mesh.getFaceUVIndices(face, set);
    return indices == nullptr
               ? std::vector<uint32_t>()
               : std::vector<uint32_t>(indices, indices + mesh.getFaceUVCount(face, set));
}

uint32_t addPoint(MeshBuilder& builder, double x, double y, double z) {
    double const xyz[3] = {x, y, z};
    return builder.addVertexCoords(xyz);
}

} // namespace

TEST(Mesh, FaceWithHoleAndTwoUVSetsBuiltInterleaved) {
    MeshBuilder builder;
    builder.setName(L"bldg:Building[b1]\\gml:lod2MultiSurface\\gml:multisurface");
    auto const red = koltx::MaterialBuilder().diffuseColor({1, 0, 0}).createSharedAndReset(nullptr);
    uint32_t const material = builder.addMaterial(red);

    // The outer face gets its last index only after the hole was built, as a decoder may do.
    uint32_t const outer = builder.addFace();
    uint32_t const v0 = addPoint(builder, 0, 0, 0);
    uint32_t const v1 = addPoint(builder, 4, 0, 0);
    uint32_t const v2 = addPoint(builder, 4, 4, 0);
    uint32_t const v3 = addPoint(builder, 0, 4, 0);
    for (uint32_t v : {v0, v1, v2})
        builder.addFaceVertexIndex(outer, v);
    uint32_t const hole = builder.addFace();
    for (int i = 0; i < 3; ++i)
        builder.addFaceVertexIndex(hole, addPoint(builder, 1 + i % 2, 1 + i / 2, 0));
    builder.addFaceVertexIndex(outer, v3);
    builder.addFaceHoleIndex(outer, hole);
    builder.setFaceMaterialIndex(outer, material);
    for (uint32_t set = 0; set < 2; ++set) {
        for (uint32_t i = 0; i < 4; ++i) {
            double const uv[2] = {double(i) + set, double(set)};
            builder.addFaceUVIndex(outer, set, builder.addUVCoords(set, uv));
        }
    }
    // Only set 1 for the hole.
    for (uint32_t i = 0; i < 3; ++i) {
        double const uv[2] = {0.5, 0.5};
        builder.addFaceUVIndex(hole, 1, builder.addUVCoords(1, uv));
    }

    auto const mesh = builder.createSharedAndReset(nullptr);
    ASSERT_TRUE(mesh);
    EXPECT_EQ(mesh->getName(), L"bldg:Building[b1]\\gml:lod2MultiSurface\\gml:multisurface");
    EXPECT_EQ(mesh->getVertexCount(), 7u);
    EXPECT_EQ(mesh->getVertexCoords().size(), 21u);
    EXPECT_EQ(mesh->getFaceCount(), 2u);
    EXPECT_EQ(faceVertices(*mesh, 0), (std::vector<uint32_t>{0, 1, 2, 3}));
    EXPECT_EQ(faceVertices(*mesh, 1), (std::vector<uint32_t>{4, 5, 6}));
    ASSERT_EQ(mesh->getFaceHoleCount(0), 1u);
    EXPECT_EQ(mesh->getFaceHoleIndices(0)[0], 1u);
    EXPECT_EQ(mesh->getFaceHoleCount(1), 0u);
    EXPECT_EQ(mesh->getFaceHoleIndices(1), nullptr);
    EXPECT_TRUE(mesh->hasHoles());
    EXPECT_TRUE(mesh->isHoleFace(1));
    EXPECT_FALSE(mesh->isHoleFace(0));

    EXPECT_EQ(mesh->getUVSetCount(), 2u);
    EXPECT_EQ(faceUVs(*mesh, 0, 0), (std::vector<uint32_t>{0, 1, 2, 3}));
    EXPECT_EQ(faceUVs(*mesh, 0, 1), (std::vector<uint32_t>{0, 1, 2, 3}));
    EXPECT_EQ(faceUVs(*mesh, 1, 0), std::vector<uint32_t>());
    EXPECT_EQ(faceUVs(*mesh, 1, 1), (std::vector<uint32_t>{4, 5, 6}));
    EXPECT_EQ(mesh->getUVCoords(1)[2], 2.0); // u of UV 1 in set 1
    EXPECT_TRUE(mesh->getUVCoords(5).empty());
    EXPECT_EQ(mesh->getFaceUVCount(0, 5), 0u);

    EXPECT_EQ(mesh->getFaceMaterialIndices(), (std::vector<uint32_t>{0, 0}));
    ASSERT_EQ(mesh->getMaterials().size(), 1u);
    EXPECT_EQ(mesh->getMaterials()[0], red);

    // Out-of-range queries answer empty rather than read past the arrays.
    EXPECT_EQ(mesh->getFaceVertexIndices(9), nullptr);
    EXPECT_EQ(mesh->getFaceVertexCount(9), 0u);

    // The builder is empty again.
    EXPECT_EQ(builder.getFaceCount(), 0u);
    EXPECT_EQ(builder.getVertexCount(), 0u);
}

TEST(Mesh, InconsistentInputIsRefusedWithTheFaceNamed) {
    auto const expectFailure = [](auto&& fill, std::string const& fragment) {
        MeshBuilder builder;
        builder.setName(L"m");
        fill(builder);
        try {
            builder.createSharedAndReset(nullptr);
            ADD_FAILURE() << "no error for " << fragment;
        } catch (std::runtime_error const& error) {
            EXPECT_NE(std::string(error.what()).find(fragment), std::string::npos) << error.what();
        }
        // A failed build leaves the builder empty and usable.
        EXPECT_EQ(builder.getFaceCount(), 0u);
    };
    auto const triangle = [](MeshBuilder& builder) {
        uint32_t const face = builder.addFace();
        for (int i = 0; i < 3; ++i)
            builder.addFaceVertexIndex(face, addPoint(builder, i, 1 - i, 0));
        return face;
    };
    expectFailure([&](MeshBuilder& b) { b.addFaceVertexIndex(b.addFace(), 0); },
                  "face 0: has 1 vertices");
    expectFailure([&](MeshBuilder& b) { b.addFaceVertexIndex(triangle(b), 99); },
                  "vertex index 99 out of range");
    expectFailure([&](MeshBuilder& b) { b.addFaceVertexIndex(5, 0); }, "face 5: no such face");
    expectFailure([&](MeshBuilder& b) { b.addFaceHoleIndex(triangle(b), 0); },
                  "hole face 0 is not another face");
    expectFailure(
        [&](MeshBuilder& b) {
            uint32_t const face = triangle(b);
            double const uv[2] = {0, 0};
            b.addFaceUVIndex(face, 0, b.addUVCoords(0, uv));
        },
        "1 UV indices in set 0 for 3 vertices");
    expectFailure(
        [&](MeshBuilder& b) {
            uint32_t const face = triangle(b);
            for (int i = 0; i < 3; ++i)
                b.addFaceUVIndex(face, 0, 7);
        },
        "UV index 7 out of range");
    expectFailure([&](MeshBuilder& b) { b.setFaceMaterialIndex(triangle(b), 3); },
                  "material index 3 out of range");
    expectFailure(
        [&](MeshBuilder& b) {
            uint32_t const a = triangle(b);
            uint32_t const c = triangle(b);
            uint32_t const hole = triangle(b);
            b.addFaceHoleIndex(a, hole);
            b.addFaceHoleIndex(c, hole);
        },
        "is a hole twice");
}

// A mesh held once is renamed and emptied where it is; one held twice is copied, the other holder
// keeping its name and arrays.
TEST(Mesh, RenamedAndTakenInPlaceOnlyWhenHeldOnce) {
    MeshBuilder builder;
    builder.setName(L"a");
    uint32_t const face = builder.addFace();
    for (int i = 0; i < 3; ++i)
        builder.addFaceVertexIndex(face, addPoint(builder, i, 1 - i, 0));
    auto mesh = builder.createSharedAndReset(nullptr);
    koltx::Mesh const* const first = mesh.get();
    mesh = MeshBuilder::renamed(std::move(mesh), L"b");
    EXPECT_TRUE(mesh.get() == first && mesh->getName() == L"b");
    auto kept = mesh;
    auto const copy = MeshBuilder::renamed(kept, L"c");
    EXPECT_TRUE(copy.get() != first && copy->getName() == L"c" && mesh->getName() == L"b");
    EXPECT_EQ(9u, MeshBuilder::takeArrays(kept).coords.size());
    EXPECT_TRUE(!kept && mesh->getVertexCount() == 3u);
    EXPECT_EQ(9u, MeshBuilder::takeArrays(mesh).coords.size());
    EXPECT_TRUE(!mesh && first != nullptr);
}

namespace {

bool sameArrays(koltx::MeshArrays const& a, koltx::MeshArrays const& b) {
    bool same = a.name == b.name && a.coords == b.coords && a.faceOffsets == b.faceOffsets &&
                a.indices == b.indices && a.holeOffsets == b.holeOffsets && a.holes == b.holes &&
                a.faceMaterials == b.faceMaterials && a.materials == b.materials &&
                a.uvSets.size() == b.uvSets.size();
    for (std::size_t s = 0; same && s < a.uvSets.size(); ++s)
        same = a.uvSets[s].coords == b.uvSets[s].coords &&
               a.uvSets[s].faceOffsets == b.uvSets[s].faceOffsets &&
               a.uvSets[s].indices == b.uvSets[s].indices;
    return same;
}

// Two triangles, the second a hole of the first, with a material and a UV set on the first.
std::shared_ptr<koltx::Mesh> holedMesh() {
    MeshBuilder builder;
    builder.setName(L"m");
    uint32_t const outer = builder.addFace();
    uint32_t const hole = builder.addFace();
    for (uint32_t face : {outer, hole})
        for (int i = 0; i < 3; ++i)
            builder.addFaceVertexIndex(face, addPoint(builder, i, 1 - i, face));
    builder.addFaceHoleIndex(outer, hole);
    builder.setFaceMaterialIndex(
        outer, builder.addMaterial(koltx::MaterialBuilder().createSharedAndReset(nullptr)));
    for (int i = 0; i < 3; ++i) {
        double const uv[2] = {double(i), 0.0};
        builder.addFaceUVIndex(outer, 0, builder.addUVCoords(0, uv));
    }
    return builder.createSharedAndReset(nullptr);
}

} // namespace

// Arrays in the form a builder gives are taken over as they are; any other form is left to the
// builder, untouched, and what the builder refuses is refused alike.
TEST(Mesh, AdoptedOnlyInTheFormABuilderGives) {
    auto const made = holedMesh();
    koltx::MeshArrays const given = made->getArrays();
    koltx::MeshArrays arrays = given;
    auto const adopted = MeshBuilder::adopt(arrays);
    ASSERT_TRUE(adopted);
    EXPECT_TRUE(sameArrays(adopted->getArrays(), given));
    EXPECT_EQ(adopted->getFaceHoleCount(0), 1u);
    EXPECT_TRUE(arrays.coords.empty());

    for (auto const& change : std::vector<void (*)(koltx::MeshArrays&)>{
             [](koltx::MeshArrays& a) { a.uvSets.emplace_back(); },
             [](koltx::MeshArrays& a) { a.uvSets[0].coords.push_back(1.0); },
             [](koltx::MeshArrays& a) { a.indices.push_back(0); },
             [](koltx::MeshArrays& a) { a.holeOffsets.pop_back(); },
             [](koltx::MeshArrays& a) { a.coords.pop_back(); },
             [](koltx::MeshArrays& a) { a.faceOffsets.clear(); }}) {
        koltx::MeshArrays other = given;
        change(other);
        koltx::MeshArrays const before = other;
        EXPECT_FALSE(MeshBuilder::adopt(other));
        EXPECT_TRUE(sameArrays(other, before));
    }

    // Without materials every face gets index 0 of the default material.
    koltx::MeshArrays plain = given;
    plain.materials.clear();
    plain.faceMaterials = {5};
    auto const defaulted = MeshBuilder::adopt(plain);
    ASSERT_TRUE(defaulted);
    EXPECT_EQ(defaulted->getFaceMaterialIndices(), (std::vector<uint32_t>{0, 0}));
    EXPECT_EQ(defaulted->getMaterials().size(), 1u);

    koltx::MeshArrays broken = given;
    broken.indices[1] = 99;
    EXPECT_THROW(
        {
            try {
                MeshBuilder::adopt(broken);
            } catch (std::runtime_error const& error) {
                EXPECT_NE(std::string(error.what()).find("vertex index 99 out of range"),
                          std::string::npos);
                throw;
            }
        },
        std::runtime_error);
}

// Prepared data becomes a mesh in the builder's form either way: taken over, or rebuilt where a
// set of UV coordinates was left empty at the end.
TEST(Mesh, PreparedDataBecomesTheBuildersMesh) {
    koltx::MeshArrays const given = holedMesh()->getArrays();
    for (bool const emptySet : {false, true}) {
        koltx::MeshData data;
        static_cast<koltx::MeshArrays&>(data) = given;
        if (emptySet)
            data.uvSets.emplace_back().faceOffsets.assign(3, 0);
        auto const mesh = data.takeMesh();
        EXPECT_TRUE(sameArrays(mesh->getArrays(), given)) << emptySet;
        EXPECT_TRUE(data.name.empty());
    }
}
