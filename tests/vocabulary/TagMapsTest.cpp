#include "vocabulary/TagMaps.h"
#include "vocabulary/GmlGeometryTags.h"

#include <gtest/gtest.h>

#include <cwctype>

namespace {

std::wstring lower(std::wstring text) {
    for (wchar_t& c : text)
        c = static_cast<wchar_t>(std::towlower(static_cast<wint_t>(c)));
    return text;
}

TEST(TagMaps, SizesSharedKeyAndOddRows) {
    EXPECT_EQ(CityGML2Tags.size(), 110u);
    EXPECT_EQ(CityGML3Tags.size(), 37u);

    std::size_t shared = 0;
    for (auto const& row : CityGML3Tags)
        shared += CityGML2Tags.count(row.first);
    EXPECT_EQ(shared, 1u);
    EXPECT_EQ(CityGML2Tags.count(L"bldg:buildingconstructiveelement"), 1u);

    EXPECT_EQ(CityGML2Tags.at(L"bldg:lod1Solid"), L"bldg:lod1Solid");
    EXPECT_EQ(CityGML2Tags.count(L"bldg:lod1solid"), 0u);
    EXPECT_EQ(CityGML2Tags.at(L"trans:transportationobject"), L"trans:TrafficArea");
    EXPECT_EQ(CityGML2Tags.at(L"sub:tunnel"), L"tun:Tunnel");
    EXPECT_EQ(CityGML3Tags.at(L"core:closuresurface"), L"ClosureSurface");
    EXPECT_EQ(CityGML2Tags.at(L"bldg:consistsofbuildingpart"), L"bldg:consistsOfBuildingPart");
    EXPECT_EQ(CityGML3Tags.at(L"con:fillingsurface"), L"con:fillingSurface");
    EXPECT_EQ(CityGML2Tags.count(L"core:cityobjectmember"), 0u);
    EXPECT_EQ(CityGML2Tags.count(L"gml:polygon"), 0u);

    // Apart from the four odd rows every key is its value in lower case.
    std::size_t odd = 0;
    for (auto const* map : {&CityGML2Tags, &CityGML3Tags}) {
        for (auto const& row : *map)
            odd += row.first != lower(row.second);
    }
    EXPECT_EQ(odd, 4u);
}

TEST(GmlGeometryTags, LookUpIgnoresCase) {
    EXPECT_EQ(GmlGeometryTags.front(), L"gml:CompositeSolid");
    EXPECT_EQ(GmlGeometryTags[7], L"gml:CompositeSolid");
    EXPECT_EQ(GmlGeometryTags.back(), L"gml:MultiGeometry");

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
