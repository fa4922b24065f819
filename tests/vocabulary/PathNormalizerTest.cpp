#include "vocabulary/PathNormalizer.h"

#include <gtest/gtest.h>

#include <regex>

namespace {

TEST(NormalizeNodePath, GoldenPaths) {
    EXPECT_EQ(normalizeNodePath(L""), L"");
    EXPECT_EQ(normalizeNodePath(L"bldg:building"), L"");
    EXPECT_EQ(normalizeNodePath(L"bldg:building[b1]\\"), L"bldg:Building[b1]\\");
    EXPECT_EQ(normalizeNodePath(L"foo\\"), L"foo[]\\");
    EXPECT_EQ(normalizeNodePath(L"bldg:lod2solid\\gml:solid[s1]\\"),
              L"bldg:lod2Solid[]\\gml:Solid[s1]\\");
    EXPECT_EQ(normalizeNodePath(L"gen:lod2geometry\\"), L"gen:lod2Geometry[]\\");
    EXPECT_EQ(normalizeNodePath(L"bldg:buildingpart\\bldg:buildingpart[p1]\\"),
              L"bldg:buildingPart[]\\bldg:BuildingPart[p1]\\");
    EXPECT_EQ(normalizeNodePath(L"sub:tunnel[t1]\\"), L"tun:Tunnel[t1]\\");
    EXPECT_EQ(normalizeNodePath(L"core:closuresurface\\"), L"ClosureSurface[]\\");
    EXPECT_EQ(normalizeNodePath(L"trans:transportationobject\\"), L"trans:TrafficArea[]\\");
    // Trailing text without a backslash is dropped; ids are copied as they stand.
    EXPECT_EQ(normalizeNodePath(L"core:cityobjectmember\\gml:polygon[P 1]\\tail"),
              L"core:cityobjectmember[]\\gml:polygon[P 1]\\");
}

TEST(NormalizeNodePath, LodTagsAndGeometryTags) {
    EXPECT_EQ(normalizeNodePath(L"bldg:lod2multisurface\\gml:multisurface[m]\\"),
              L"bldg:lod2MultiSurface[]\\gml:MultiSurface[m]\\");
    EXPECT_EQ(normalizeNodePath(L"core:lod3solid\\gml:compositesolid\\"),
              L"core:lod3Solid[]\\gml:CompositeSolid[]\\");
    EXPECT_EQ(normalizeNodePath(L"frn:lod1geometry\\"), L"frn:lod1geometry[]\\");
    // The lower-cased look-up never finds the row with the capital S; the LOD rule does the work.
    EXPECT_EQ(normalizeNodePath(L"bldg:lod1solid\\"), L"bldg:lod1Solid[]\\");
    EXPECT_EQ(normalizeNodePath(L"bldg:lod1Solid\\"), L"bldg:lod1Solid[]\\");
    // The suffix is replaced wherever it stands, also ahead of "lod".
    EXPECT_EQ(normalizeNodePath(L"solid:lod2solid\\"), L"Solid:lod2Solid[]\\");
    // A suffix with regex syntax is compiled as an expression: "." matches any character.
    EXPECT_EQ(normalizeNodePath(L"x:lod.olid\\"), L"x:lod.olid[]\\");
    EXPECT_EQ(normalizeNodePath(L"x:lod\\"), L"x:lod[]\\");
    EXPECT_EQ(normalizeNodePath(L"x:lod4\\"), L"x:lod4[]\\");
    EXPECT_THROW(normalizeNodePath(L"x:lod(\\"), std::regex_error);
}

TEST(NormalizeNodePath, PropertyPairsNeedTheirSuccessor) {
    EXPECT_EQ(normalizeNodePath(L"bldg:buildingroom\\bldg:buildingroom\\"),
              L"bldg:buildingRoom[]\\bldg:BuildingRoom[]\\");
    EXPECT_EQ(normalizeNodePath(L"bldg:buildinginstallation\\bldg:buildinginstallation[i]\\"),
              L"bldg:buildingInstallation[]\\bldg:BuildingInstallation[i]\\");
    EXPECT_EQ(normalizeNodePath(L"brid:bridgeinstallation\\brid:bridgeinstallation\\"),
              L"brid:bridgeInstallation[]\\brid:BridgeInstallation[]\\");
    EXPECT_EQ(normalizeNodePath(L"trans:section\\trans:section\\"),
              L"trans:section[]\\trans:Section[]\\");
    EXPECT_EQ(normalizeNodePath(L"trans:intersection\\trans:intersection\\"),
              L"trans:intersection[]\\trans:Intersection[]\\");
    EXPECT_EQ(normalizeNodePath(L"trans:trafficarea\\trans:trafficarea[t]\\"),
              L"trans:trafficArea[]\\trans:TrafficArea[t]\\");
    // Another successor, or a successor without its closing backslash, leaves the feature.
    EXPECT_EQ(normalizeNodePath(L"bldg:buildingpart\\bldg:lod2solid\\"),
              L"bldg:BuildingPart[]\\bldg:lod2Solid[]\\");
    EXPECT_EQ(normalizeNodePath(L"bldg:buildingpart\\bldg:buildingpart"), L"bldg:BuildingPart[]\\");
}

TEST(DetectCityGMLVersion, SeedsAndTags) {
    int version = -1;
    EXPECT_TRUE(detectCityGMLVersion(L"bldg:building\\core:boundary\\", &version, 0));
    EXPECT_EQ(version, 3);
    EXPECT_TRUE(detectCityGMLVersion(L"bldg:building\\", &version, 0));
    EXPECT_EQ(version, 2);
    EXPECT_FALSE(detectCityGMLVersion(L"foo\\", &version, 0));
    EXPECT_EQ(version, 0);
    EXPECT_TRUE(detectCityGMLVersion(L"foo\\", &version, 1));
    EXPECT_EQ(version, 1);
    EXPECT_TRUE(detectCityGMLVersion(L"bldg:building\\", &version, 3));
    EXPECT_EQ(version, 3);
    EXPECT_TRUE(detectCityGMLVersion(L"con:wallsurface\\", &version, 2));
    EXPECT_EQ(version, 3);
    // Tags are lower-cased before the look-up, so schema spellings count as well.
    EXPECT_TRUE(detectCityGMLVersion(L"bldg:Building[b]\\con:WallSurface[w]\\", &version, 0));
    EXPECT_EQ(version, 3);
    // The row with a capital S is never found; a component without backslash is not read.
    EXPECT_FALSE(detectCityGMLVersion(L"bldg:lod1Solid\\", &version, 0));
    EXPECT_FALSE(detectCityGMLVersion(L"bldg:building", &version, 0));
    // The shared key is a 2.0 row as well as a 3.0 row; 3.0 wins.
    EXPECT_TRUE(detectCityGMLVersion(L"bldg:buildingconstructiveelement\\", &version, 0));
    EXPECT_EQ(version, 3);
}

} // namespace
