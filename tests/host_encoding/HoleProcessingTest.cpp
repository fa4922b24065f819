#include "MeshFixtures.h"
#include "koltx/DefaultNamePreparator.h"
#include "koltx/EncodePreparator.h"
#include "koltx/HoleProcessor.h"
#include "koltx/MaterialBuilder.h"
#include "koltx/MeshBuilder.h"
#include "koltx/MeshUtils.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>

using namespace koltx;
using Flags = EncodePreparator::PreparationFlags;

namespace {

std::shared_ptr<Mesh> prepare(std::shared_ptr<Mesh> const& mesh, Flags const& flags) {
    DefaultNamePreparator names(L"_", L"_");
    auto preparator =
        EncodePreparator::create(true, names, names.newNamespace(), names.newNamespace(), nullptr);
    preparator->addLeafShape(nullptr, std::make_shared<Shape>(fixtures::geometryOf({mesh})),
                             nullptr, ReportsPtr());
    std::vector<EncodePreparator::FinalizedInstance> instances;
    preparator->fetchInstances(instances, flags, nullptr);
    return instances.at(0).getGeometry()->getMeshes().at(0);
}

std::vector<double> faceCoords(Mesh const& mesh, uint32_t face) {
    std::vector<double> out;
    for (uint32_t k = 0; k < mesh.getFaceVertexCount(face); ++k) {
        double const* p = &mesh.getVertexCoords()[size_t(mesh.getFaceVertexIndices(face)[k]) * 3];
        out.insert(out.end(), p, p + 3);
    }
    return out;
}

// Area of the square minus its hole (96) plus the triangle (12.5).
constexpr double AREA = 96.0 + 12.5;

} // namespace

TEST(HoleProcessing, TriangulatesFacesWithHolesAndLeavesTheOthers) {
    auto material = MaterialBuilder().createSharedAndReset(nullptr);
    auto mesh = fixtures::squareWithHole(L"bldg:Building[b]\\gml:MultiSurface[m]\\", material);
    ASSERT_DOUBLE_EQ(MeshUtils::surfaceArea(*mesh), AREA);

    auto out = prepare(mesh, Flags().processHoles(HoleProcessor::TRIANGULATE));
    EXPECT_FALSE(out->hasHoles());
    EXPECT_EQ(out->getName(), mesh->getName());
    EXPECT_NEAR(MeshUtils::surfaceArea(*out), AREA, 1e-9);
    // The square's triangles take its place; the hole-free triangle follows unchanged.
    ASSERT_GE(out->getFaceCount(), 9u);
    EXPECT_EQ(faceCoords(*out, out->getFaceCount() - 1), faceCoords(*mesh, 1));
    for (uint32_t f = 0; f + 1 < out->getFaceCount(); ++f) {
        EXPECT_EQ(out->getFaceVertexCount(f), 3u);
        EXPECT_LE(faceCoords(*out, f)[0], 10.0); // within the square
    }
    EXPECT_TRUE(fixtures::uvIndicesValid(*out));
    ASSERT_EQ(out->getFaceUVCount(1, 0), 3u);
    // UVs travel with their corners: u is x / 10 here.
    for (uint32_t f = 0; f < out->getFaceCount(); ++f)
        for (uint32_t k = 0; k < out->getFaceVertexCount(f); ++k) {
            double const x = out->getVertexCoords()[size_t(out->getFaceVertexIndices(f)[k]) * 3];
            double const u = out->getUVCoords(0)[size_t(out->getFaceUVIndices(f, 0)[k]) * 2];
            EXPECT_NEAR(u, x / 10.0, 1e-12);
        }
    EXPECT_EQ(out->getMaterials().at(0), material);
}

TEST(HoleProcessing, BridgesHolesIntoTheirFace) {
    auto mesh = fixtures::squareWithHole(L"wall");
    auto out = HoleProcessor::process(mesh, HoleProcessor::BRIDGE);
    EXPECT_FALSE(out->hasHoles());
    ASSERT_EQ(out->getFaceCount(), 2u);
    // Four outer corners, five hole corners (its start twice) and the outer corner again.
    EXPECT_EQ(out->getFaceVertexCount(0), 10u);
    EXPECT_NEAR(MeshUtils::faceArea(*out, 0), 96.0, 1e-9);
    EXPECT_EQ(faceCoords(*out, 1), faceCoords(*mesh, 1));
    EXPECT_TRUE(fixtures::uvIndicesValid(*out));
    EXPECT_EQ(out->getFaceUVCount(0, 0), 10u);
    // The bridge starts at the hole corner farthest along the first plane axis.
    EXPECT_EQ(out->getName(), L"wall");

    auto prepared = prepare(mesh, Flags().processHoles(HoleProcessor::BRIDGE));
    EXPECT_NEAR(MeshUtils::surfaceArea(*prepared), AREA, 1e-9);
}

TEST(HoleProcessing, PassKeepsHolesAndTriangulateSplitsEverything) {
    auto mesh = fixtures::squareWithHole(L"wall");
    EXPECT_EQ(HoleProcessor::process(mesh, HoleProcessor::PASS), mesh);
    auto passed = prepare(mesh, Flags());
    EXPECT_TRUE(passed->hasHoles());
    EXPECT_EQ(passed->getFaceCount(), 3u);
    EXPECT_TRUE(passed->isHoleFace(2));

    auto all = prepare(mesh, Flags().triangulate(true));
    EXPECT_FALSE(all->hasHoles());
    for (uint32_t f = 0; f < all->getFaceCount(); ++f)
        EXPECT_EQ(all->getFaceVertexCount(f), 3u);
    EXPECT_NEAR(MeshUtils::surfaceArea(*all), AREA, 1e-9);
    EXPECT_TRUE(fixtures::uvIndicesValid(*all));

    auto quads = prepare(fixtures::quadSoup(3, 3.0, L"q"), Flags().triangulate(true));
    EXPECT_EQ(quads->getFaceCount(), 18u);
    EXPECT_NEAR(MeshUtils::surfaceArea(*quads), 9.0, 1e-9);
    EXPECT_TRUE(fixtures::uvIndicesValid(*quads));
}

TEST(HoleProcessing, SeveralHolesInAConcaveFaceKeepTheirArea) {
    // An L-shaped face (area 75) with two square holes of area 1 and 4, in the xy-plane.
    MeshBuilder builder;
    builder.setName(L"l");
    auto ring = [&](std::vector<std::pair<double, double>> const& points) {
        uint32_t const face = builder.addFace();
        for (auto const& p : points) {
            double const xyz[3] = {p.first, p.second, 0.0};
            builder.addFaceVertexIndex(face, builder.addVertexCoords(xyz));
        }
        return face;
    };
    uint32_t const outer = ring({{0, 0}, {10, 0}, {10, 5}, {5, 5}, {5, 10}, {0, 10}});
    uint32_t const small = ring({{1, 1}, {2, 1}, {2, 2}, {1, 2}});
    uint32_t const large = ring({{1, 6}, {3, 6}, {3, 8}, {1, 8}});
    builder.addFaceHoleIndex(outer, small);
    builder.addFaceHoleIndex(outer, large);
    auto mesh = builder.createSharedAndReset(nullptr);
    ASSERT_DOUBLE_EQ(MeshUtils::surfaceArea(*mesh), 70.0);

    auto bridged = HoleProcessor::process(mesh, HoleProcessor::BRIDGE);
    ASSERT_EQ(bridged->getFaceCount(), 1u);
    EXPECT_EQ(bridged->getFaceVertexCount(0), 6u + 5u + 1u + 5u + 1u);
    EXPECT_NEAR(MeshUtils::faceArea(*bridged, 0), 70.0, 1e-9);
    // Triangulating the bridged ring covers exactly the same area.
    auto triangles = prepare(bridged, Flags().triangulate(true));
    EXPECT_NEAR(MeshUtils::surfaceArea(*triangles), 70.0, 1e-9);
    for (uint32_t f = 0; f < triangles->getFaceCount(); ++f)
        EXPECT_EQ(triangles->getFaceVertexCount(f), 3u);

    auto triangulated = prepare(mesh, Flags().processHoles(HoleProcessor::TRIANGULATE));
    EXPECT_NEAR(MeshUtils::surfaceArea(*triangulated), 70.0, 1e-9);

    // A concave face alone, triangulated: same area, no triangle outside the L.
    MeshBuilder alone;
    uint32_t const face = alone.addFace();
    for (auto const& p : std::vector<std::pair<double, double>>{
             {0, 0}, {10, 0}, {10, 5}, {5, 5}, {5, 10}, {0, 10}}) {
        double const xyz[3] = {p.first, p.second, 0.0};
        alone.addFaceVertexIndex(face, alone.addVertexCoords(xyz));
    }
    auto split = prepare(alone.createSharedAndReset(nullptr), Flags().triangulate(true));
    EXPECT_EQ(split->getFaceCount(), 4u);
    EXPECT_NEAR(MeshUtils::surfaceArea(*split), 75.0, 1e-9);
}

TEST(HoleProcessing, NonFiniteAndDegenerateInputNeitherCrashesNorHangs) {
    double const nan = std::nan(""), inf = std::numeric_limits<double>::infinity();
    MeshBuilder builder;
    builder.setName(L"bad");
    auto ring = [&](std::vector<std::array<double, 3>> const& points) {
        uint32_t const face = builder.addFace();
        for (auto const& p : points)
            builder.addFaceVertexIndex(face, builder.addVertexCoords(p.data()));
        return face;
    };
    uint32_t const outer = ring({{0, 0, 0}, {nan, 0, 0}, {10, 0, 10}, {0, 0, 10}});
    uint32_t const hole = ring({{1, 0, 1}, {1, 0, 1}, {1, 0, 1}});
    builder.addFaceHoleIndex(outer, hole);
    ring({{inf, 0, 0}, {0, inf, 0}, {0, 0, -inf}, {1, 1, 1}});
    ring({{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {3, 0, 0}}); // collinear
    uint32_t const huge = ring({{0, 0, 0}, {1e300, 0, 0}, {1e300, 0, 1e300}, {0, 0, 1e300}});
    builder.addFaceHoleIndex(huge, ring({{1e299, 0, 1e299}, {2e299, 0, 1e299}, {2e299, 0, 2e299}}));
    auto mesh = builder.createSharedAndReset(nullptr);

    std::wstring warnings;
    auto direct = HoleProcessor::process(mesh, HoleProcessor::TRIANGULATE, &warnings);
    EXPECT_FALSE(direct->isHoleFace(1)); // the hole of the face with a NaN stands alone
    EXPECT_NE(warnings.find(L"not finite"), std::wstring::npos);

    for (auto action : {HoleProcessor::PASS, HoleProcessor::TRIANGULATE, HoleProcessor::BRIDGE}) {
        for (bool triangulate : {false, true}) {
            auto out = prepare(mesh, Flags()
                                         .processHoles(action)
                                         .triangulate(triangulate)
                                         .mergeVertices(true)
                                         .mergeToleranceVertices(0.01f));
            ASSERT_TRUE(out);
            EXPECT_GE(out->getFaceCount(), 1u);
            for (uint32_t f = 0; f < out->getFaceCount(); ++f)
                for (uint32_t k = 0; k < out->getFaceVertexCount(f); ++k)
                    EXPECT_LT(out->getFaceVertexIndices(f)[k], out->getVertexCount());
        }
    }
}
