#include "koltx/EncodePreparator.h"
#include "MeshFixtures.h"
#include "kolt/AttributeMapBuilder.h"
#include "koltx/DefaultNamePreparator.h"
#include "koltx/InitialShape.h"
#include "koltx/KOLTUtils.h"
#include "koltx/MeshBuilder.h"

#include <gtest/gtest.h>

#include <set>
#include <stdexcept>
#include <tuple>

using namespace koltx;
using Flags = EncodePreparator::PreparationFlags;
using Instances = std::vector<EncodePreparator::FinalizedInstance>;

namespace {

struct Preparator {
    DefaultNamePreparator names{L"_", L"_"};
    std::shared_ptr<EncodePreparator> preparator;
    explicit Preparator(bool alwaysCopy = true) {
        preparator = EncodePreparator::create(alwaysCopy, names, names.newNamespace(),
                                              names.newNamespace(), nullptr);
    }
    void leaf(std::shared_ptr<Geometry> const& geometry,
              Shape::Transform const& transform = Shape::identity(),
              kolt::AttributeMap const* attributes = nullptr) {
        preparator->addLeafShape(nullptr, std::make_shared<Shape>(geometry, transform), attributes,
                                 ReportsPtr());
    }
    Instances fetch(Flags const& flags) {
        Instances instances;
        kolt::Status status = 99;
        preparator->fetchInstances(instances, flags, &status);
        EXPECT_EQ(status, 0);
        return instances;
    }
};

Flags merging(float tolerance) {
    return Flags().mergeVertices(true).mergeToleranceVertices(tolerance);
}

std::shared_ptr<Mesh> triangles(std::vector<std::array<double, 3>> const& points,
                                std::wstring const& name = L"t") {
    MeshBuilder builder;
    builder.setName(name);
    for (size_t i = 0; i < points.size(); i += 3) {
        uint32_t const face = builder.addFace();
        for (size_t k = 0; k < 3; ++k)
            builder.addFaceVertexIndex(face, builder.addVertexCoords(points[i + k].data()));
    }
    return builder.createSharedAndReset(nullptr);
}

} // namespace

TEST(EncodePreparator, MergesAMillionGridVerticesKeepingUVsValid) {
    Preparator p;
    auto soup = fixtures::quadSoup(500, 500.0, L"grid");
    ASSERT_EQ(soup->getVertexCount(), 1000000u);
    p.leaf(fixtures::geometryOf({soup}));
    Instances instances = p.fetch(merging(0.001f));
    ASSERT_EQ(instances.size(), 1u);
    auto const& meshes = instances[0].getGeometry()->getMeshes();
    ASSERT_EQ(meshes.size(), 1u);
    Mesh const& merged = *meshes[0];
    EXPECT_EQ(merged.getVertexCount(), 501u * 501u);
    EXPECT_EQ(merged.getFaceCount(), 250000u);
    EXPECT_EQ(merged.getName(), L"grid");
    for (uint32_t f = 0; f < merged.getFaceCount(); f += 997)
        EXPECT_EQ(merged.getFaceVertexCount(f), 4u);
    EXPECT_EQ(merged.getUVCoords(0).size(), soup->getUVCoords(0).size());
    EXPECT_TRUE(fixtures::uvIndicesValid(merged));
    // Neighbouring quads now share their corner vertex.
    EXPECT_EQ(merged.getFaceVertexIndices(0)[1], merged.getFaceVertexIndices(1)[0]);
    EXPECT_EQ(merged.getFaceVertexIndices(0)[2], merged.getFaceVertexIndices(1)[3]);

    // Cleaning the UVs joins the four distinct corners.
    p.leaf(fixtures::geometryOf({soup}));
    Instances cleaned = p.fetch(merging(0.001f).cleanupUVs(true));
    auto const cleanMesh = cleaned[0].getGeometry()->getMeshes()[0];
    Mesh const& clean = *cleanMesh;
    EXPECT_EQ(clean.getUVCoords(0).size(), 8u);
    EXPECT_TRUE(fixtures::uvIndicesValid(clean));
}

TEST(EncodePreparator, ToleranceDecidesWhichVerticesBecomeOne) {
    auto mesh =
        triangles({{0, 0, 0}, {1, 0, 0}, {0, 0, 1}, {0.0004, 0, 0}, {1.002, 0, 0}, {0, 0, 1}});
    auto count = [&](Flags const& flags) {
        Preparator p;
        p.leaf(fixtures::geometryOf({mesh}));
        return p.fetch(flags)[0].getGeometry()->getMeshes()[0]->getVertexCount();
    };
    EXPECT_EQ(count(merging(0.001f)), 4u); // A' joins A, C' joins C, B' stays
    EXPECT_EQ(count(merging(0.0f)), 5u);   // only the exact duplicate C'
    EXPECT_EQ(count(merging(0.01f)), 3u);  // B' joins B as well
    EXPECT_EQ(count(Flags()), 6u);         // not merging at all
    EXPECT_EQ(count(merging(-1.0f)), 5u);  // a negative tolerance means exact
}

TEST(EncodePreparator, CollapsedCornersAreDroppedOnlyWhileAFaceKeepsThree) {
    MeshBuilder builder;
    builder.setName(L"q");
    double const pts[5][3] = {{0, 0, 0}, {1, 0, 0}, {1.0001, 0, 0}, {1, 0, 1}, {0, 0, 1}};
    uint32_t const quad = builder.addFace();
    for (auto const& p : pts)
        builder.addFaceVertexIndex(quad, builder.addVertexCoords(p));
    Preparator p;
    p.leaf(fixtures::geometryOf({builder.createSharedAndReset(nullptr)}));
    auto const outMesh = p.fetch(merging(0.001f))[0].getGeometry()->getMeshes()[0];
    Mesh const& out = *outMesh;
    EXPECT_EQ(out.getVertexCount(), 4u);
    ASSERT_EQ(out.getFaceCount(), 1u);
    ASSERT_EQ(out.getFaceVertexCount(0), 4u);

    auto sliver = triangles({{0, 0, 0}, {0.0001, 0, 0}, {1, 0, 0}});
    Preparator q;
    q.leaf(fixtures::geometryOf({sliver}));
    auto const keptMesh = q.fetch(merging(0.001f))[0].getGeometry()->getMeshes()[0];
    Mesh const& kept = *keptMesh;
    EXPECT_EQ(kept.getFaceCount(), 1u);
    EXPECT_EQ(kept.getFaceVertexCount(0), 3u);
}

TEST(EncodePreparator, AppliesLeafTransformsAndReportsTheBox) {
    Preparator p;
    auto geometry = fixtures::geometryOf({fixtures::quadSoup(1, 2.0, L"a")});
    BoundingBox box;
    p.preparator->getBoundingBox(box);
    EXPECT_FALSE(box.isValid());
    Shape::Transform scaled = Shape::translation(100, 0, -5);
    scaled[0] = 3; // x scaled by 3
    p.leaf(geometry, scaled);
    p.leaf(geometry);
    p.preparator->getBoundingBox(box);
    ASSERT_TRUE(box.isValid());
    EXPECT_EQ(box.getMin(), (std::vector<double>{0, 0, -5}));
    EXPECT_EQ(box.getMax(), (std::vector<double>{106, 0, 2}));

    Instances instances = p.fetch(Flags());
    ASSERT_EQ(instances.size(), 1u);
    auto const& meshes = instances[0].getGeometry()->getMeshes();
    ASSERT_EQ(meshes.size(), 2u);
    auto const& moved = meshes[0]->getVertexCoords();
    EXPECT_EQ(std::vector<double>(moved.begin(), moved.begin() + 6),
              (std::vector<double>{100, 0, -5, 100, 0, -3}));
    EXPECT_EQ(meshes[1]->getVertexCoords(), geometry->getMeshes()[0]->getVertexCoords());
    // The box belongs to the shape that was fetched.
    p.preparator->getBoundingBox(box);
    EXPECT_FALSE(box.isValid());
}

TEST(EncodePreparator, KeepsMeshesApartAndNamesUntouchedUnlessMerging) {
    auto a = fixtures::quadSoup(2, 1.0, L"bldg:Building[b1]\\gml:Solid[s]\\");
    auto b = fixtures::quadSoup(1, 1.0, L"");
    auto geometry = fixtures::geometryOf({a, b});

    Preparator keep;
    keep.leaf(geometry);
    keep.leaf(fixtures::geometryOf({a}), Shape::translation(5, 0, 0));
    auto kept = keep.fetch(Flags().meshMerging(MeshMerging::KEEP));
    ASSERT_EQ(kept.size(), 1u);
    auto const& meshes = kept[0].getGeometry()->getMeshes();
    ASSERT_EQ(meshes.size(), 3u);
    EXPECT_EQ(meshes[0]->getName(), a->getName());
    EXPECT_EQ(meshes[1]->getName(), L"");
    EXPECT_EQ(meshes[2]->getName(), a->getName());
    EXPECT_EQ(meshes[0]->getFaceCount(), 4u);

    Preparator merge;
    merge.leaf(geometry);
    auto merged = merge.fetch(Flags().meshMerging(MeshMerging::MERGE));
    ASSERT_EQ(merged[0].getGeometry()->getMeshes().size(), 1u);
    auto const& one = *merged[0].getGeometry()->getMeshes()[0];
    EXPECT_EQ(one.getFaceCount(), 5u);
    EXPECT_EQ(one.getVertexCount(), 20u);
    EXPECT_EQ(one.getName(), L"shape"); // names differ: the instance's name
    EXPECT_TRUE(fixtures::uvIndicesValid(one));

    Preparator same;
    same.leaf(fixtures::geometryOf({a, a}));
    EXPECT_EQ(same.fetch(Flags().meshMerging(MeshMerging::MERGE))[0]
                  .getGeometry()
                  ->getMeshes()[0]
                  ->getName(),
              a->getName());
}

TEST(EncodePreparator, FetchGivesWhatWasAddedSinceTheLastFetch) {
    Preparator p(false);
    auto mesh = fixtures::quadSoup(1, 1.0, L"m");
    auto geometry = fixtures::geometryOf({mesh});
    EXPECT_TRUE(p.fetch(Flags()).empty());

    KOLTUtils::AttributeMapBuilderPtr attributes(kolt::AttributeMapBuilder::create());
    attributes->setString(L"/enc/metaData/owner", L"city");
    KOLTUtils::AttributeMapPtr map(attributes->createAttributeMap());
    p.leaf(geometry, Shape::identity(), map.get());
    map.reset(); // the preparator keeps its own copy
    Instances first = p.fetch(Flags());
    ASSERT_EQ(first.size(), 1u);
    // Without alwaysCopy an untouched mesh goes on as the same object.
    EXPECT_EQ(first[0].getGeometry()->getMeshes()[0], mesh);
    EXPECT_STREQ(first[0].getGeometry()->getAttributeMap()->getString(L"/enc/metaData/owner"),
                 L"city");
    EXPECT_TRUE(p.fetch(Flags()).empty());

    p.leaf(geometry);
    Instances second = p.fetch(Flags());
    ASSERT_EQ(second.size(), 1u);
    EXPECT_EQ(second[0].getGeometry()->getAttributeMap()->getKeyCount(), 0u);
    EXPECT_EQ(second[0].getName(), L"shape_1");
    EXPECT_EQ(second[0].getInitialShapeIndex(), 3u); // one per fetch, empty ones too

    Preparator copying(true);
    copying.leaf(geometry);
    EXPECT_NE(copying.fetch(Flags())[0].getGeometry()->getMeshes()[0], mesh);
}

TEST(EncodePreparator, FallbackAddsTheInitialShapesOwnGeometry) {
    Preparator p;
    auto own = fixtures::geometryOf({fixtures::quadSoup(1, 1.0, L"own")});
    InitialShape withGeometry(L"lot", nullptr, {}, own);
    InitialShape without(L"empty", nullptr, {});
    p.preparator->addFallbackShape(nullptr, &withGeometry, 7);
    Instances instances = p.fetch(Flags());
    ASSERT_EQ(instances.size(), 1u);
    EXPECT_EQ(instances[0].getInitialShapeIndex(), 7u);
    EXPECT_EQ(instances[0].getName(), L"lot");
    EXPECT_EQ(instances[0].getGeometry()->getMeshes()[0]->getName(), L"own");
    p.preparator->addFallbackShape(nullptr, &without, 8);
    EXPECT_TRUE(p.fetch(Flags()).empty());

    EXPECT_THROW(p.preparator->addLeafShape(nullptr, nullptr, nullptr, ReportsPtr()),
                 std::invalid_argument);
    EXPECT_THROW(p.preparator->addLeafShape(nullptr, std::make_shared<Shape>(nullptr), nullptr,
                                            ReportsPtr()),
                 std::invalid_argument);
    EXPECT_THROW(p.preparator->addFallbackShape(nullptr, nullptr, 0), std::invalid_argument);
}

TEST(EncodePreparator, InstancingKeepsEachLeafWithItsTransform) {
    Preparator p;
    auto geometry = fixtures::geometryOf({fixtures::quadSoup(1, 1.0, L"m")});
    auto reports = std::make_shared<Reports>();
    reports->addFloat(L"h", 3);
    p.preparator->addLeafShape(
        nullptr, std::make_shared<Shape>(geometry, Shape::translation(9, 0, 0), reports), nullptr,
        ReportsPtr());
    p.leaf(geometry, Shape::translation(0, 4, 0));
    Instances instances = p.fetch(Flags().instancing(true));
    ASSERT_EQ(instances.size(), 2u);
    EXPECT_EQ(instances[0].getTransform()[12], 9);
    EXPECT_EQ(instances[1].getTransform()[13], 4);
    EXPECT_EQ(instances[0].getReports(), reports);
    EXPECT_EQ(instances[0].getName(), L"shape");
    EXPECT_EQ(instances[1].getName(), L"shape_1");
    // Geometry stays in the leaf's own coordinates.
    EXPECT_EQ(instances[0].getGeometry()->getMeshes()[0]->getVertexCoords(),
              geometry->getMeshes()[0]->getVertexCoords());
}

TEST(EncodePreparator, RefusesMissingNameSpaces) {
    DefaultNamePreparator names(L"_", L"_");
    kolt::Status status = 0;
    EXPECT_EQ(EncodePreparator::create(true, names, nullptr, names.newNamespace(), &status),
              nullptr);
    EXPECT_EQ(status, kolt::STATUS_ILLEGAL_VALUE);
    EXPECT_THROW(EncodePreparator::create(true, names, names.newNamespace(), nullptr, nullptr),
                 std::invalid_argument);
}
