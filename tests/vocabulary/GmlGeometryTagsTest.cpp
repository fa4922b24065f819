#include "vocabulary/GmlGeometryTags.h"

#include <gtest/gtest.h>

namespace {

TEST(GmlGeometryTags, LookUpIgnoresCase) {
    EXPECT_TRUE(isGmlGeometryTag(L"gml:multisurface"));
    EXPECT_TRUE(isGmlGeometryTag(L"GML:TRIANGULATEDSURFACE"));
    EXPECT_FALSE(isGmlGeometryTag(L"gml:polygon"));
    EXPECT_FALSE(isGmlGeometryTag(L"gml:Solid2"));
    EXPECT_FALSE(isGmlGeometryTag(L""));

    EXPECT_EQ(canonicalGmlGeometryTag(L"gml:orientablesurface"), L"gml:OrientableSurface");
    EXPECT_EQ(canonicalGmlGeometryTag(L"gml:compositesolid"), L"gml:CompositeSolid");
    std::wstring const unknown = L"gml:Polygon";
    EXPECT_EQ(canonicalGmlGeometryTag(unknown).data(), unknown.data());
}

} // namespace
