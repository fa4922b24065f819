#include "koltx/MeshUtils.h"
#include "koltx/MaterialBuilder.h"
#include "koltx/MeshBuilder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

using koltx::MeshBuilder;
using koltx::MeshUtils;

namespace {

// Adds a ring of points (x, y) on the plane z = x + 2, i.e. tilted, with UVs (x / 10, y / 10) in
// set 0 and (y, x) in set 1. Returns the face.
uint32_t addRing(MeshBuilder& builder, std::vector<std::pair<double, double>> const& points,
                 bool withUVs) {
    uint32_t const face = builder.addFace();
    for (auto const& [x, y] : points) {
        double const xyz[3] = {x, y, x + 2};
        builder.addFaceVertexIndex(face, builder.addVertexCoords(xyz));
        if (withUVs) {
            double const uv0[2] = {x / 10, y / 10};
            double const uv1[2] = {y, x};
            builder.addFaceUVIndex(face, 0, builder.addUVCoords(0, uv0));
            builder.addFaceUVIndex(face, 1, builder.addUVCoords(1, uv1));
        }
    }
    return face;
}

// For every corner of every face: u of set 0 is x / 10 and v of set 1 is x; and z = x + 2.
void expectUVsFollowPositions(koltx::Mesh const& mesh) {
    auto const& coords = mesh.getVertexCoords();
    for (uint32_t face = 0; face < mesh.getFaceCount(); ++face) {
        ASSERT_EQ(mesh.getFaceUVCount(face, 0), mesh.getFaceVertexCount(face));
        ASSERT_EQ(mesh.getFaceUVCount(face, 1), mesh.getFaceVertexCount(face));
        for (uint32_t i = 0; i < mesh.getFaceVertexCount(face); ++i) {
            double const* p = coords.data() + 3 * mesh.getFaceVertexIndices(face)[i];
            double const* uv0 = mesh.getUVCoords(0).data() + 2 * mesh.getFaceUVIndices(face, 0)[i];
            double const* uv1 = mesh.getUVCoords(1).data() + 2 * mesh.getFaceUVIndices(face, 1)[i];
            EXPECT_NEAR(uv0[0], p[0] / 10, 1e-9);
            EXPECT_NEAR(uv0[1], p[1] / 10, 1e-9);
            EXPECT_NEAR(uv1[0], p[1], 1e-9);
            EXPECT_NEAR(uv1[1], p[0], 1e-9);
            EXPECT_NEAR(p[2], p[0] + 2, 1e-9);
        }
    }
}

} // namespace

TEST(MeshUtils, TriangulatesHolesKeepingAreaUVsMaterialAndOtherFaces) {
    MeshBuilder builder;
    builder.setName(L"walls");
    builder.addMaterial(koltx::MaterialBuilder().createSharedAndReset(nullptr));
    uint32_t const red = builder.addMaterial(
        koltx::MaterialBuilder().diffuseColor({1, 0, 0}).createSharedAndReset(nullptr));
    uint32_t const plain = addRing(builder, {{20, 0}, {21, 0}, {21, 1}}, true);
    uint32_t const outer = addRing(builder, {{0, 0}, {10, 0}, {10, 10}, {0, 10}}, true);
    // Two holes, one wound the other way, one touching nothing.
    uint32_t const hole1 = addRing(builder, {{2, 2}, {4, 2}, {4, 4}, {2, 4}}, true);
    uint32_t const hole2 = addRing(builder, {{6, 6}, {6, 8}, {8, 8}, {8, 6}}, true);
    builder.addFaceHoleIndex(outer, hole1);
    builder.addFaceHoleIndex(outer, hole2);
    builder.setFaceMaterialIndex(outer, red);
    auto const mesh = builder.createSharedAndReset(nullptr);
    double const area = MeshUtils::surfaceArea(*mesh);
    // Tilted by 45 degrees about y: areas grow by sqrt(2).
    EXPECT_NEAR(area, (0.5 + 100 - 4 - 4) * std::sqrt(2.0), 1e-9);

    std::wstring warnings;
    auto const result = MeshUtils::triangulateHoles(mesh, &warnings);
    EXPECT_TRUE(warnings.empty());
    ASSERT_NE(result, mesh);
    EXPECT_FALSE(result->hasHoles());
    EXPECT_EQ(result->getName(), L"walls");
    EXPECT_NEAR(MeshUtils::surfaceArea(*result), area, 1e-9);
    // The face without holes comes through untouched and first.
    EXPECT_EQ(result->getFaceVertexCount(plain), 3u);
    EXPECT_EQ(result->getFaceMaterialIndices()[plain], 0u);
    ASSERT_GT(result->getFaceCount(), 2u);
    double normal[3];
    MeshUtils::faceNormal(*mesh, outer, normal);
    for (uint32_t face = 1; face < result->getFaceCount(); ++face) {
        EXPECT_EQ(result->getFaceVertexCount(face), 3u);
        EXPECT_EQ(result->getFaceMaterialIndices()[face], red);
        // Same side as the original face.
        double triangleNormal[3];
        MeshUtils::faceNormal(*result, face, triangleNormal);
        EXPECT_GT(triangleNormal[0] * normal[0] + triangleNormal[1] * normal[1] +
                      triangleNormal[2] * normal[2],
                  0.0);
    }
    EXPECT_EQ(result->getMaterials(), mesh->getMaterials());
    expectUVsFollowPositions(*result);
}

TEST(MeshUtils, CrossingHoleGetsInterpolatedVertices) {
    MeshBuilder builder;
    uint32_t const outer = addRing(builder, {{0, 0}, {10, 0}, {10, 10}, {0, 10}}, true);
    // This hole reaches over the right edge: the tesselator adds vertices where edges cross.
    uint32_t const hole = addRing(builder, {{8, 4}, {12, 4}, {12, 6}, {8, 6}}, true);
    builder.addFaceHoleIndex(outer, hole);
    auto const mesh = builder.createSharedAndReset(nullptr);
    auto const result = MeshUtils::triangulateHoles(mesh);
    ASSERT_GT(result->getVertexCount(), mesh->getVertexCount());
    // Odd winding: the part of the hole outside the face is covered, the inside part cut out.
    EXPECT_NEAR(MeshUtils::surfaceArea(*result), (100 - 4 + 4) * std::sqrt(2.0), 1e-9);
    expectUVsFollowPositions(*result);
}

TEST(MeshUtils, UVSetMissingOnAHoleIsDroppedForThatFace) {
    MeshBuilder builder;
    uint32_t const outer = addRing(builder, {{0, 0}, {4, 0}, {4, 4}, {0, 4}}, true);
    uint32_t const hole = addRing(builder, {{1, 1}, {2, 1}, {2, 2}}, false);
    builder.addFaceHoleIndex(outer, hole);
    auto const result = MeshUtils::triangulateHoles(builder.createSharedAndReset(nullptr));
    ASSERT_GT(result->getFaceCount(), 0u);
    for (uint32_t face = 0; face < result->getFaceCount(); ++face)
        EXPECT_EQ(result->getFaceUVCount(face, 0), 0u);
    EXPECT_NEAR(MeshUtils::surfaceArea(*result), (16 - 0.5) * std::sqrt(2.0), 1e-9);
}

TEST(MeshUtils, FaceWithCoordinatesThatAreNotFiniteIsKeptWithAWarning) {
    double const bad[] = {std::numeric_limits<double>::quiet_NaN(),
                          std::numeric_limits<double>::infinity()};
    for (double value : bad) {
        MeshBuilder builder;
        builder.setName(L"odd");
        uint32_t const outer = addRing(builder, {{0, 0}, {10, 0}, {10, 10}, {0, 10}}, false);
        uint32_t const hole = builder.addFace();
        double const corners[3][3] = {{2, 2, value}, {4, 2, 6}, {4, 4, 6}};
        for (auto const& xyz : corners)
            builder.addFaceVertexIndex(hole, builder.addVertexCoords(xyz));
        builder.addFaceHoleIndex(outer, hole);
        std::wstring warnings;
        auto const result =
            MeshUtils::triangulateHoles(builder.createSharedAndReset(nullptr), &warnings);
        EXPECT_EQ(result->getFaceCount(), 1u);
        EXPECT_EQ(result->getFaceVertexCount(0), 4u);
        EXPECT_EQ(warnings,
                  L"Face 0 of mesh 'odd' could not be triangulated; its holes were dropped.\n");
    }
}
