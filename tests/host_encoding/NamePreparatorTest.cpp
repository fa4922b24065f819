#include "koltx/DefaultNamePreparator.h"

#include <gtest/gtest.h>

#include <stdexcept>

using koltx::DefaultNamePreparator;
using koltx::NamePreparator;

namespace {

std::wstring legal(std::wstring name, int32_t kind = NamePreparator::KIND_FILE) {
    DefaultNamePreparator(L"_", L"_").legalizeName(name, kind);
    return name;
}

} // namespace

TEST(NamePreparator, FileNamesKeepOnlySafeCharacters) {
    EXPECT_EQ(legal(L"wall-01_a.png"), L"wall-01_a.png");
    EXPECT_EQ(legal(L"my wall/ü.png"), L"my_wall__.png");
    EXPECT_EQ(legal(L"..hidden.png"), L"__hidden.png");
    EXPECT_EQ(legal(L"a..b"), L"a..b");
    EXPECT_EQ(legal(L"C:\\x"), L"C__x");
    EXPECT_EQ(legal(L""), L"");
    // A character beyond the basic plane is one replacement, not two.
    EXPECT_EQ(legal(std::wstring(L"a") + wchar_t(0xD83D) + wchar_t(0xDE00) + L"b"), L"a_b");
    // The first separator is what replaces.
    std::wstring name = L"a b";
    DefaultNamePreparator(L"--", L"#").legalizeName(name, NamePreparator::KIND_FILE);
    EXPECT_EQ(name, L"a--b");
    // Other kinds lose control characters only.
    EXPECT_EQ(legal(L"bldg:Building[b1]\\ a\n", NamePreparator::KIND_MESH),
              L"bldg:Building[b1]\\ a_");
    DefaultNamePreparator preparator(L"_", L"_");
    EXPECT_TRUE(preparator.isLegalName(L"wall.png", NamePreparator::KIND_FILE));
    EXPECT_FALSE(preparator.isLegalName(L".wall", NamePreparator::KIND_FILE));
}

TEST(NamePreparator, UniqueNamesCountBeforeTheExtensionWithinOneSpace) {
    DefaultNamePreparator preparator(L"_", L"_");
    auto space = preparator.newNamespace();
    auto other = preparator.newNamespace();
    std::wstring out;
    preparator.uniqueName(out, L"wall.png", NamePreparator::KIND_FILE, space);
    EXPECT_EQ(out, L"wall.png");
    preparator.uniqueName(out, L"wall.png", NamePreparator::KIND_FILE, space);
    EXPECT_EQ(out, L"wall_1.png");
    preparator.uniqueName(out, L"wall.png", NamePreparator::KIND_FILE, space);
    EXPECT_EQ(out, L"wall_2.png");
    // A name given out as a counter form is taken; the literal asks for the next one.
    preparator.uniqueName(out, L"wall_3.png", NamePreparator::KIND_FILE, space);
    EXPECT_EQ(out, L"wall_3.png");
    preparator.uniqueName(out, L"wall.png", NamePreparator::KIND_FILE, space);
    EXPECT_EQ(out, L"wall_4.png");
    preparator.uniqueName(out, L"noext", NamePreparator::KIND_FILE, space);
    preparator.uniqueName(out, L"noext", NamePreparator::KIND_FILE, space);
    EXPECT_EQ(out, L"noext_1");
    preparator.uniqueName(out, L"a.b.jpg", NamePreparator::KIND_FILE, space);
    preparator.uniqueName(out, L"a.b.jpg", NamePreparator::KIND_FILE, space);
    EXPECT_EQ(out, L"a.b_1.jpg");
    // Kinds and spaces are separate; mesh names count at the end.
    preparator.uniqueName(out, L"wall.png", NamePreparator::KIND_FILE, other);
    EXPECT_EQ(out, L"wall.png");
    preparator.uniqueName(out, L"wall.png", NamePreparator::KIND_MESH, space);
    EXPECT_EQ(out, L"wall.png");
    preparator.uniqueName(out, L"wall.png", NamePreparator::KIND_MESH, space);
    EXPECT_EQ(out, L"wall.png_1");

    std::wstring name = L"my wall.png";
    preparator.legalizeAndUniqueName(name, NamePreparator::KIND_FILE, space);
    EXPECT_EQ(name, L"my_wall.png");
    name = L"my wall.png";
    preparator.legalizeAndUniqueName(name, NamePreparator::KIND_FILE, space);
    EXPECT_EQ(name, L"my_wall_1.png");

    EXPECT_THROW(preparator.uniqueName(out, L"x", NamePreparator::KIND_FILE, nullptr),
                 std::invalid_argument);
}
