#include "koltx/URI.h"
#include "koltx/ResolveMap.h"
#include "koltx/URIUtils.h"

#include <ScratchDir.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

using koltx::ResolveMap;
using koltx::URI;
using koltx::URIUtils;

TEST(URI, ParsesPartsAndKeepsPathDecoded) {
    auto const uri = URI::create(L"FILE:///data/my%20city/Wall%C3%A4.PNG?x=1#top");
    ASSERT_TRUE(uri);
    EXPECT_TRUE(uri->isFile());
    EXPECT_EQ(uri->getScheme(), L"file");
    EXPECT_EQ(uri->getPath(), L"/data/my city/Wall\u00E4.PNG");
    EXPECT_EQ(uri->getBaseName(), L"Wall\u00E4.PNG");
    EXPECT_EQ(uri->getExtension(), L".PNG");
    EXPECT_EQ(uri->getQuery(), L"x=1");
    EXPECT_EQ(uri->getFragment(), L"top");
    EXPECT_EQ(uri->wstring(), L"file:///data/my%20city/Wall%C3%A4.PNG?x=1#top");
    EXPECT_EQ(uri->getNativePath(), "/data/my city/Wall\xC3\xA4.PNG");

    auto const web = URI::create(L"http://example.com");
    EXPECT_EQ(web->getAuthority(), L"example.com");
    EXPECT_EQ(web->getPath(), L"/");
    EXPECT_EQ(web->getNativePath(), "");

    // Lenient: blanks and stray "%" are literal and come out encoded.
    auto const sloppy = URI::create(L"file:///a b/100%.jpg");
    EXPECT_EQ(sloppy->getPath(), L"/a b/100%.jpg");
    EXPECT_EQ(sloppy->wstring(), L"file:///a%20b/100%25.jpg");
    EXPECT_EQ(URI::create(L".hidden")->getExtension(), L"");
    EXPECT_EQ(URI::create(L"dir.d/file")->getExtension(), L"");
    EXPECT_EQ(URI::create(L""), nullptr);
}

TEST(ResolveMap, AnchorsKeysRelativeToTheAnchorsFolder) {
    EXPECT_EQ(ResolveMap::anchorRelativeKey(nullptr, L"data/city.gml", L"tex/a.png"),
              L"data/tex/a.png");
    EXPECT_EQ(ResolveMap::anchorRelativeKey(nullptr, L"data/sub/city.gml", L"../tex/./a b.png"),
              L"data/tex/a b.png");
    EXPECT_EQ(ResolveMap::anchorRelativeKey(nullptr, L"city.gml", L"a.png"), L"a.png");
    EXPECT_EQ(ResolveMap::anchorRelativeKey(nullptr, L"/abs/city.gml", L"../../a.png"), L"/a.png");
    EXPECT_EQ(ResolveMap::anchorRelativeKey(nullptr, L"d/c.gml", L"/x/../y.png"), L"/y.png");
    EXPECT_EQ(ResolveMap::anchorRelativeKey(nullptr, L"d/c.gml", L"http://h/a/../b.png"),
              L"http://h/b.png");

    // An anchor that is mapped to a URI lends its folder when the joined key is not mapped.
    ResolveMap map;
    map.addEntry(L"city.gml", URI::create(L"file:///data/my%20dir/city.gml"));
    std::wstring const anchored =
        ResolveMap::anchorRelativeKey(&map, L"city.gml", L"t/\u00E4 1.png");
    EXPECT_EQ(anchored, L"file:///data/my%20dir/t/\u00E4 1.png");
    EXPECT_EQ(ResolveMap::resolveKeyWithURIFallback(&map, anchored)->getPath(),
              L"/data/my dir/t/\u00E4 1.png");
    map.addEntry(L"t/a.png", URI::create(L"file:///elsewhere/a.png"));
    EXPECT_EQ(ResolveMap::anchorRelativeKey(&map, L"city.gml", L"t/a.png"), L"t/a.png");
}

TEST(ResolveMap, PercentEncodedPathsAreDecodedOnlyWhenThatFileExists) {
    testsupport::ScratchDir const folder("uri");
    std::ofstream(folder / "my wall.png") << "x";
    std::ofstream(folder / "100%.png") << "x";
    std::wstring const base = folder.path().wstring();
    EXPECT_EQ(ResolveMap::resolveKeyWithURIFallback(nullptr, base + L"/my%20wall.png")->getPath(),
              base + L"/my wall.png");
    EXPECT_EQ(ResolveMap::resolveKeyWithURIFallback(nullptr, base + L"/100%.png")->getPath(),
              base + L"/100%.png");
}
