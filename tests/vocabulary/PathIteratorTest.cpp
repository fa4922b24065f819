#include "vocabulary/PathIterator.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

// Renders every component as "tag|id" so whole walks compare as one golden list.
std::vector<std::wstring> walk(std::wstring const& path) {
    std::vector<std::wstring> parts;
    for (PathIterator it(path); !it.atEnd(); ++it)
        parts.push_back(std::wstring(it.tag) + L"|" + std::wstring(it.id));
    return parts;
}

TEST(PathIterator, WalksComponentsOfEveryForm) {
    using V = std::vector<std::wstring>;
    EXPECT_EQ(walk(L""), V{});
    EXPECT_EQ(walk(L"bldg:Building"), V{});
    EXPECT_EQ(walk(L"bldg:Building[b1]\\"), V{L"bldg:Building|b1"});
    EXPECT_EQ(walk(L"bldg:Building[b1]\\bldg:lod2Solid\\gml:Solid[]\\tail"),
              (V{L"bldg:Building|b1", L"bldg:lod2Solid|", L"gml:Solid|"}));
    // The LOD fallback form: the last tag has no closing backslash and is dropped.
    EXPECT_EQ(walk(L"gml:lod2MultiSurface\\gml:multisurface"), V{L"gml:lod2MultiSurface|"});
    // The closing bracket is not looked for: the last character goes whatever it is.
    EXPECT_EQ(walk(L"a[xy\\"), V{L"a|x"});
    EXPECT_EQ(walk(L"a[\\"), V{L"a|"});
    // A doubled backslash yields all remaining text as one component, then its parts.
    EXPECT_EQ(walk(L"a\\\\b\\c\\"), (V{L"a|", L"b\\c\\|", L"b|", L"c|"}));
}

TEST(PathIterator, ViewsAndEquality) {
    std::wstring const path = L"a[1]\\b\\rest";
    PathIterator it(path);
    EXPECT_EQ(it.previous, L"a[1]\\b\\rest");
    EXPECT_EQ(it.rest, L"b\\rest");
    ++it;
    EXPECT_EQ(it.tag, L"b");
    EXPECT_EQ(it.previous, L"b\\rest");
    EXPECT_EQ(it.rest, L"rest");

    PathIterator copy = it;
    EXPECT_TRUE(copy == it);
    ++copy;
    EXPECT_TRUE(copy != it);
    EXPECT_TRUE(copy.atEnd());
    EXPECT_TRUE(copy == PathIterator());
    EXPECT_TRUE(PathIterator(L"") == PathIterator());

    // Equal contents at different addresses are equal iterators.
    std::wstring const other = L"a[1]\\b\\rest";
    EXPECT_TRUE(PathIterator(path) == PathIterator(other));
}

} // namespace
