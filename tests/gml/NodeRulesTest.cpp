// What the nodes decide apart from their text: identifiers, matching of appearance members,
// limits of converted values, look-ups and misuse.
#include "GmlTestSupport.h"

#include "gml/BasicMaterialAppearanceMemberNode.h"
#include "gml/GeometryNode.h"
#include "gml/Identifiers.h"
#include "gml/PolygonNode.h"
#include "gml/TextureAppearanceMemberNode.h"
#include "gml/internal/GenericAttributes.h"

#include <koltx/MaterialBuilder.h>

#include <Golden.h>

#include <sys/wait.h>
#include <unistd.h>

#include <regex>
#include <set>
#include <thread>

namespace {

using gml::BasicMaterialAppearanceMemberNode;
using gml::GeometryNode;
using gml::PolygonNode;
using gml::TextureAppearanceMemberNode;

bool isIdentifier(std::wstring const& id) {
    static std::regex const pattern(testsupport::identifierPattern);
    return std::regex_match(std::string(id.begin(), id.end()), pattern);
}

TEST(Identifiers, FreshWellFormedAndDistinctAcrossThreadsAndForks) {
    std::vector<std::set<std::wstring>> perThread(4);
    std::vector<std::thread> threads;
    for (auto& ids : perThread)
        threads.emplace_back([&ids] {
            for (int i = 0; i < 500; ++i)
                ids.insert(gml::newUuidString());
        });
    for (auto& thread : threads)
        thread.join();
    std::set<std::wstring> all;
    for (auto const& ids : perThread)
        all.insert(ids.begin(), ids.end());
    EXPECT_EQ(all.size(), 2000u);
    for (auto const& id : all)
        ASSERT_TRUE(isIdentifier(id)) << std::string(id.begin(), id.end());

    // The parent has a block of random bytes in hand; a child must not reuse it.
    int channel[2];
    ASSERT_EQ(pipe(channel), 0);
    pid_t const child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        std::wstring const id = gml::newUuidString();
        std::string const text(id.begin(), id.end());
        _exit(::write(channel[1], text.data(), text.size()) == 36 ? 0 : 1);
    }
    close(channel[1]);
    std::wstring const mine = gml::newUuidString();
    char buffer[64] = {};
    ssize_t const length = read(channel[0], buffer, sizeof buffer);
    close(channel[0]);
    waitpid(child, nullptr, 0);
    ASSERT_EQ(length, 36);
    EXPECT_NE(std::wstring(buffer, buffer + 36), mine);
}

TEST(PolygonNode, IdsByFormAndBrokenNodesFail) {
    auto const quad = gmltest::referenceQuad();
    PolygonNode polygon(quad, gmltest::referenceId, 0, L"gml:MultiSurface");
    std::wstring const prefix = gmltest::referenceId + L"_poly0";
    EXPECT_EQ(polygon.polygonId(), prefix);
    ASSERT_EQ(polygon.ringId().compare(0, prefix.size() + 1, prefix + L"."), 0);
    EXPECT_TRUE(isIdentifier(polygon.ringId().substr(prefix.size() + 1)));
    // Patches and triangles have no id of their own; their ring is a fresh identifier.
    for (auto const* tag : {L"gml:Surface", L"gml:TriangulatedSurface"}) {
        PolygonNode patch(quad, gmltest::referenceId, 0, tag);
        EXPECT_EQ(patch.polygonId(), L"");
        EXPECT_TRUE(isIdentifier(patch.ringId()));
    }
    EXPECT_FALSE(PolygonNode(quad, L"a", 0, L"gml:OrientableSurface").isOrientableSurface());
    // Two nodes of the same face never share an id.
    std::wstring const fresh = gml::newUuidString();
    PolygonNode again(quad, fresh, 0, L"gml:MultiSurface");
    // An id held as bytes is found by its text, and an empty id finds no polygon.
    EXPECT_TRUE(again.hasId(fresh) && !again.hasId(L"") && again.polygonId().find(fresh) == 0);
    PolygonNode other(quad, gml::newUuidString(), 0, L"gml:MultiSurface");
    EXPECT_NE(again.polygonId(), other.polygonId());
    EXPECT_NE(again.ringId(), other.ringId());

    auto const orientable = GeometryNode(L"o", true, L"gml:OrientableSurface", quad);
    EXPECT_TRUE(orientable.isOrientableSurface());
    EXPECT_FALSE(orientable.writesOwnTag());

    std::ostringstream out;
    gml::XmlWriter writer(out, 3, 3);
    EXPECT_THROW(PolygonNode(quad, L"p", 1, L"gml:MultiSurface").write(writer), std::out_of_range);
    EXPECT_THROW(PolygonNode(nullptr, L"p", 0, L"gml:MultiSurface").write(writer),
                 std::out_of_range);
    // A geometry without a tag would close one element more than it opened.
    EXPECT_THROW(GeometryNode(L"u", false, L"", quad).write(writer), std::logic_error);
}

TEST(CityElementNode, ChildrenAreFoundByIdAlone) {
    gml::CityElementNode parent(L"p", false, L"a:p");
    parent.addChild(nullptr);
    EXPECT_TRUE(parent.children.empty());
    auto first = std::make_shared<gml::CityElementNode>(L"", false, L"a:first");
    auto second = std::make_shared<gml::CityElementNode>(L"x", false, L"a:second");
    parent.addChild(first);
    parent.addChild(second);
    EXPECT_EQ(parent.findChild(L""), first);
    EXPECT_EQ(parent.findChild(L"x"), second);
    EXPECT_EQ(parent.findChild(L"xx"), nullptr);
    EXPECT_EQ(parent.findChild(std::wstring(L"x\0", 2)), nullptr);
}

TEST(GenericAttributes, NumbersStopAtNul) {
    int integer = 0;
    EXPECT_FALSE(gml::tryParseInt(std::wstring(L"4\0"
                                               L"2",
                                               3),
                                  integer));
    double number = 0;
    EXPECT_TRUE(gml::tryParseDouble(L"-0.5", number));
    EXPECT_EQ(number, -0.5);
    EXPECT_FALSE(gml::tryParseDouble(L"", number));
}

std::shared_ptr<koltx::Material> wall() {
    return koltx::MaterialBuilder()
        .name(L"wall")
        .ambientColor({0.2, 0.2, 0.2})
        .diffuseColor({0.8, 0.8, 0.8})
        .emissiveColor({0, 0, 0})
        .specularColor({1, 1, 1})
        .shininess(0.5)
        .opacity(0.75)
        .createSharedAndReset(nullptr);
}

TEST(MaterialMember, ConvertedValuesAreLimited) {
    auto const made = [](std::vector<double> ambient, std::vector<double> diffuse) {
        return BasicMaterialAppearanceMemberNode(koltx::MaterialBuilder()
                                                     .ambientColor(ambient)
                                                     .diffuseColor(diffuse)
                                                     .createSharedAndReset(nullptr))
            .ambientIntensity;
    };
    EXPECT_EQ(made({0, 0, 0}, {0.5, 0.5, 0.5}), 0.0f);
    EXPECT_EQ(made({0.1, 0.1, 0.1}, {0, 0, 0}), 1.0f);
    EXPECT_EQ(made({0.9, 0.9, 0.9}, {0.3, 0.3, 0.3}), 1.0f);
    koltx::MaterialBuilder builder;
    EXPECT_EQ(BasicMaterialAppearanceMemberNode(builder.opacity(1.0).createSharedAndReset(nullptr))
                  .transparency,
              0.0f);
    EXPECT_EQ(BasicMaterialAppearanceMemberNode(builder.opacity(0.0).createSharedAndReset(nullptr))
                  .transparency,
              1.0f);
    // A value that the float can't hold never matches its own member.
    for (double shininess : {20.0, 0.1}) {
        auto const material = builder.shininess(shininess).createSharedAndReset(nullptr);
        EXPECT_FALSE(BasicMaterialAppearanceMemberNode(material).matches(material)) << shininess;
    }
}

TEST(MaterialMember, MatchesEqualValuesWithoutTexture) {
    BasicMaterialAppearanceMemberNode member(wall());
    EXPECT_TRUE(member.matches(wall()));
    EXPECT_FALSE(member.matches(nullptr));
    std::vector<std::function<void(koltx::MaterialBuilder&)>> const changes = {
        [](auto& b) { b.name(L"other"); },
        [](auto& b) {
            b.specularColor({1, 1, 0.5});
        },
        [](auto& b) { b.opacity(0.5); },
        [](auto& b) {
            b.ambientColor({0.4, 0.4, 0.4});
        },
        // A textured material belongs to a texture member, even with equal values.
        [](auto& b) { b.diffuseMap({gmltest::makeTexture(7)}, {L"t.png"}); },
    };
    for (auto const& change : changes) {
        koltx::MaterialBuilder builder(*wall());
        change(builder);
        EXPECT_FALSE(member.matches(builder.createSharedAndReset(nullptr)));
    }
    // An invalid or missing texture does not count as one.
    koltx::MaterialBuilder invalid(*wall());
    EXPECT_TRUE(member.matches(
        invalid.diffuseMap({nullptr, std::make_shared<koltx::Texture>(nullptr)}, {L"a", L"b"})
            .createSharedAndReset(nullptr)));
}

TEST(TextureMember, MatchesByFirstValidTextureOnly) {
    auto texture = gmltest::makeTexture(5);
    TextureAppearanceMemberNode member(L"wall", texture, L"wall.png");
    koltx::MaterialBuilder builder;
    EXPECT_FALSE(member.matches(nullptr));
    EXPECT_FALSE(member.matches(builder.createSharedAndReset(nullptr)));
    // Same content, other colours and name: one member.
    EXPECT_TRUE(member.matches(builder.name(L"a")
                                   .diffuseColor({0.1, 0.2, 0.3})
                                   .diffuseMap({gmltest::makeTexture(5)}, {L"k"})
                                   .createSharedAndReset(nullptr)));
    // Null and invalid entries are skipped; only the first valid one is compared.
    EXPECT_TRUE(member.matches(builder
                                   .diffuseMap({nullptr, std::make_shared<koltx::Texture>(nullptr),
                                                texture, gmltest::makeTexture(9)},
                                               {L"a", L"b", L"c", L"d"})
                                   .createSharedAndReset(nullptr)));
    EXPECT_FALSE(member.matches(builder.diffuseMap({gmltest::makeTexture(9), texture}, {L"a", L"b"})
                                    .createSharedAndReset(nullptr)));
}

} // namespace
