#include "koltx/BoundingBox.h"
#include "koltx/GeometryBuilder.h"
#include "koltx/MeshBuilder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

std::shared_ptr<koltx::Mesh> triangle(double offset) {
    koltx::MeshBuilder builder;
    uint32_t const face = builder.addFace();
    for (int i = 0; i < 3; ++i) {
        double const xyz[3] = {offset + i, -offset, double(i * i)};
        builder.addFaceVertexIndex(face, builder.addVertexCoords(xyz));
    }
    return builder.createSharedAndReset(nullptr);
}

} // namespace

TEST(Geometry, CollectsMeshesUriAndAttributes) {
    koltx::GeometryBuilder builder;
    // Through the attribute interface, as a decoder uses it.
    koltx::AttributeSetter& attributes = builder;
    attributes.setInt(L"/fields/storeys", 3);
    attributes.setFloat(L"/fields/height", 12.5);
    attributes.setString(L"/georef/spatialReference", L"EPSG:25832");
    attributes.setBool(L"/fields/listed", true);
    attributes.setStringArray(L"/fields/names", {L"a", L"b"});
    attributes.setBoolArray(L"/fields/flags", {true, false});
    attributes.setIntArray(L"/fields/ids", {4, 5});
    attributes.setFloatArray(L"/fields/heights", {1.0});
    builder.setURI(koltx::URI::create(L"file:///city.gml"));
    builder.addMesh(triangle(0));
    builder.addMesh(nullptr);
    builder.addMesh(triangle(10));
    EXPECT_EQ(builder.getMeshCount(), 2u);

    auto const geometry = builder.createSharedAndReset(nullptr);
    EXPECT_EQ(geometry->getContentType(), kolt::CT_GEOMETRY);
    EXPECT_EQ(geometry->getURI()->getPath(), L"/city.gml");
    EXPECT_EQ(geometry->getMeshes().size(), 2u);
    EXPECT_EQ(geometry->getFaceCount(), 2u);
    EXPECT_EQ(geometry->getVertexCount(), 6u);
    auto const* map = geometry->getAttributeMap();
    EXPECT_EQ(map->getKeyCount(), 8u);
    EXPECT_EQ(map->getInt(L"/fields/storeys"), 3);
    EXPECT_EQ(map->getFloat(L"/fields/height"), 12.5);
    EXPECT_EQ(std::wstring(map->getString(L"/georef/spatialReference")), L"EPSG:25832");
    EXPECT_TRUE(map->getBool(L"/fields/listed"));
    size_t count = 0;
    EXPECT_FALSE(map->getBoolArray(L"/fields/flags", &count)[1]);
    EXPECT_EQ(count, 2u);

    auto const box = geometry->getBoundingBox();
    ASSERT_TRUE(box.isValid());
    EXPECT_EQ(box.getMin(), (std::vector<double>{0, -10, 0}));
    EXPECT_EQ(box.getMax(), (std::vector<double>{12, 0, 4}));

    // The builder starts over.
    auto const empty = builder.createSharedAndReset(nullptr);
    EXPECT_TRUE(empty->getMeshes().empty());
    EXPECT_EQ(empty->getURI(), nullptr);
    EXPECT_EQ(empty->getAttributeMap()->getKeyCount(), 0u);
    EXPECT_FALSE(empty->getBoundingBox().isValid());
}

TEST(BoundingBox, GrowsFromEmptyAndCopies) {
    koltx::BoundingBox box;
    EXPECT_FALSE(box.isValid());
    EXPECT_EQ(box.getMin(), (std::vector<double>{0, 0, 0}));
    box.add(1, 2, 3);
    EXPECT_EQ(box.getMin(), box.getMax());
    box.addPoints({-1, 5, 0, 2, 2, 2});
    EXPECT_EQ(box.getMin(), (std::vector<double>{-1, 2, 0}));
    EXPECT_EQ(box.getMax(), (std::vector<double>{2, 5, 3}));
    EXPECT_EQ(box.getCenter(), (std::vector<double>{0.5, 3.5, 1.5}));
    EXPECT_EQ(box.getSize(), (std::vector<double>{3, 3, 3}));
    koltx::BoundingBox const copy(box);
    box.reset();
    EXPECT_TRUE(copy.isValid());
    EXPECT_FALSE(box.isValid());
    koltx::BoundingBox other;
    other.add(copy);
    other.add(koltx::BoundingBox());
    EXPECT_EQ(other.getMax(), copy.getMax());
    double const lo[3] = {5, 0, 0}, hi[3] = {0, 1, 1};
    EXPECT_EQ(koltx::BoundingBox(lo, hi).getMin(), (std::vector<double>{0, 0, 0}));
}
