#include "EncoderTestSupport.h"

#include <gml/RootNode.h>

#include <koltx/Log.h>
#include <koltx/MemoryLogSink.h>
#include <koltx/StatusException.h>

#include <Golden.h>
#include <gtest/gtest.h>

#include <cstdio>

namespace {

using enctest::encodeToText;
using enctest::makeGeometry;
using enctest::makeInitialShape;
using enctest::makeLeaf;
using enctest::makeMesh;
using enctest::Square;

std::wstring const buildingPath =
    L"bldg:Building[b1]\\bldg:lod2MultiSurface[]\\gml:MultiSurface[ms1]\\";

std::shared_ptr<koltx::InitialShape const> oneSquareShape(std::wstring const& name) {
    return makeInitialShape({makeLeaf(makeGeometry({makeMesh(name, {Square{1, 2, 3, 1, 0}})}))});
}

// The host's memory outputs with an `open` that never touches the status.
class SilentOpenCallbacks : public koltx::MemoryOutputCallbacks {
public:
    uint64_t open(wchar_t const* encoderId, int32_t contentType, wchar_t const* name, int32_t mode,
                  uint64_t sizeHint, kolt::Status*) override {
        return koltx::MemoryOutputCallbacks::open(encoderId, contentType, name, mode, sizeHint,
                                                  nullptr);
    }
};

class NotAnOutput : public kolt::Callbacks {};

int statusOfFinish(kolt::Callbacks* callbacks) {
    auto const options = enctest::validatedOptions(nullptr);
    try {
        enctest::runEncoder({}, options.get(), callbacks);
    } catch (koltx::StatusException const& e) {
        return e.getStatus();
    }
    return 0;
}

} // namespace

TEST(EncoderLifecycle, EmptyGenerationGivesTheSmallestDocument) {
    koltx::MemoryOutputCallbacks outputs;
    std::string const text = encodeToText({}, nullptr, &outputs);
    EXPECT_EQ((std::vector<std::wstring>{L"gml_default_name.gml"}), outputs.getNames());
    EXPECT_TRUE(testsupport::matchesGolden("encoder/empty.gml", text));
}

TEST(EncoderLifecycle, OneBuildingDocument) {
    std::string const text = encodeToText({oneSquareShape(buildingPath)});
    EXPECT_TRUE(testsupport::matchesGolden("encoder/one_building.gml", text));
}

TEST(EncoderLifecycle, PathlessMeshDocumentWithSrsAndPrecision) {
    std::string const text = encodeToText({oneSquareShape(L"plain")}, [](auto& b) {
        b.setString(L"srsName", L"EPSG:25832");
        b.setFloat(L"vertexPrecision", 0.00001);
        b.setString(L"baseName", L"a");
    });
    EXPECT_TRUE(testsupport::matchesGolden("encoder/pathless_srs_precision.gml", text));
}

TEST(EncoderLifecycle, OutputNameAndDigitsFollowTheOptions) {
    koltx::MemoryOutputCallbacks outputs;
    std::string const text = encodeToText(
        {oneSquareShape(buildingPath)},
        [](auto& b) {
            b.setString(L"baseName", L"a");
            b.setFloat(L"vertexPrecision", 1.0);
        },
        &outputs);
    EXPECT_EQ((std::vector<std::wstring>{L"a.gml"}), outputs.getNames());
    EXPECT_NE(std::string::npos, text.find("<gml:lowerCorner>1 -4 2 </gml:lowerCorner>"));
}

TEST(EncoderLifecycle, FinishReportsUnusableOutputs) {
    NotAnOutput other;
    EXPECT_EQ(27, statusOfFinish(&other));
    EXPECT_EQ(27, statusOfFinish(nullptr));
    SilentOpenCallbacks silent;
    EXPECT_EQ(1, statusOfFinish(&silent));
    // Nothing was closed, so nothing is there.
    EXPECT_TRUE(silent.getNames().empty());

    // A finish before init is a usage error, logged and passed on as a plain exception.
    auto sink = std::make_shared<koltx::MemoryLogSink>();
    koltx::Log::Scope scope(sink, kolt::LOG_TRACE);
    koltx::MemoryOutputCallbacks outputs;
    auto const options = enctest::validatedOptions(nullptr);
    std::unique_ptr<koltx::Encoder> encoder(enctest::factory().create(options.get(), &outputs));
    koltx::GenerateContext context({}, nullptr, &outputs);
    try {
        encoder->finish(context);
        FAIL() << "no exception";
    } catch (koltx::StatusException const&) {
        FAIL() << "wrong type";
    } catch (std::exception const&) {
    }
    ASSERT_EQ(1u, sink->getEntries().size());
    EXPECT_EQ("Encoder 'com.morvane.kolt.codecs.CityGMLEncoder': finish called before init",
              sink->getEntries()[0].second);
}

TEST(EncoderLifecycle, AttributesFromMetadataAndReports) {
    auto reports = std::make_shared<koltx::Reports>();
    reports->addString(L"name", L"from report");
    reports->addString(L"kind", L"string wins");
    reports->addBool(L"kind", true);
    reports->addBool(L"flag", false);
    reports->addFloat(L"height", 1.5);
    reports->addFloat(L"height", 2.25); // summed over leaves and entries
    reports->addFloat(L"empty", 3);
    auto const attributes = enctest::makeAttributes([](kolt::AttributeMapBuilder& b) {
        b.setString(L"/enc/metaData/name", L"from metadata");
        b.setString(L"/enc/metaData/empty", L"");
        b.setInt(L"/enc/metaData/storeys", -3);
        b.setFloat(L"/enc/metaData/area", 12.5);
        b.setBool(L"/enc/metaData/listed", true);
        double const values[2] = {1, 2};
        b.setFloatArray(L"/enc/metaData/array", values, 2);
        b.setString(L"/enc/other", L"ignored");
        b.setString(L"/enc/metaData/", L"nameless");
    });
    auto const mesh = makeMesh(buildingPath, {Square{}});
    auto const shape = makeInitialShape({makeLeaf(makeGeometry({mesh}), reports)}, attributes);
    CityGMLEncoder* raw = nullptr;
    koltx::MemoryOutputCallbacks outputs;
    auto const options = enctest::validatedOptions(nullptr);
    enctest::runEncoder({shape}, options.get(), &outputs, &raw);
    std::unique_ptr<CityGMLEncoder> encoder(raw);

    auto const& group = encoder->getDocument()->memberGroups.at(0);
    auto const root = std::dynamic_pointer_cast<gml::RootNode>(group.at(0));
    ASSERT_TRUE(root);
    std::map<std::wstring, std::wstring> const expected = {
        {L"", L"nameless"},   {L"area", L"12.500000"},     {L"empty", L"3.000000"},
        {L"flag", L"false"},  {L"height", L"3.750000"},    {L"kind", L"string wins"},
        {L"listed", L"true"}, {L"name", L"from metadata"}, {L"storeys", L"-3"}};
    EXPECT_EQ(expected, root->attributes);
    EXPECT_TRUE(encoder->getDocument()->usedPrefixes.count(L"gen"));
}

TEST(EncoderLifecycle, FailingLeavesFallBackToTheShapesOwnGeometry) {
    auto const good = makeLeaf(makeGeometry({makeMesh(
        L"bldg:Building[b]\\bldg:lod2MultiSurface[]\\gml:MultiSurface[good]\\", {Square{}})}));
    // A leaf without geometry makes the host's preparator throw.
    auto const broken = std::make_shared<koltx::Shape>(nullptr);
    auto const fallback = makeGeometry(
        {makeMesh(L"bldg:Building[b]\\bldg:lod2MultiSurface[]\\gml:MultiSurface[fallback]\\",
                  {Square{}, Square{5, 0, 0, 1, 0}})});
    auto const shape = makeInitialShape({good, broken}, nullptr, fallback);

    std::string const withFallback = encodeToText({shape});
    EXPECT_NE(std::string::npos, withFallback.find("gml:id=\"good\""));
    EXPECT_NE(std::string::npos, withFallback.find("gml:id=\"fallback\""));

    std::string const without =
        encodeToText({shape}, [](auto& b) { b.setBool(L"errorFallback", false); });
    EXPECT_NE(std::string::npos, without.find("gml:id=\"good\""));
    EXPECT_EQ(std::string::npos, without.find("gml:id=\"fallback\""));

    // Nothing usable at all: the shape is still there, without members.
    auto const lost = makeInitialShape({broken});
    std::string const empty =
        encodeToText({lost}, [](auto& b) { b.setBool(L"errorFallback", false); });
    EXPECT_EQ(std::string::npos, empty.find("cityObjectMember"));
}

TEST(EncoderLifecycle, InitStartsAFreshDocumentAndNegativeLodBecomesZero) {
    koltx::MemoryOutputCallbacks outputs;
    auto const options = enctest::validatedOptions([](auto& b) { b.setInt(L"LOD", -2); });
    std::unique_ptr<koltx::Encoder> base(enctest::factory().create(options.get(), &outputs));
    auto* encoder = static_cast<CityGMLEncoder*>(base.get());
    auto const shapes = std::vector<std::shared_ptr<koltx::InitialShape const>>{
        oneSquareShape(L"x"), oneSquareShape(buildingPath)};
    koltx::GenerateContext context(shapes, nullptr, &outputs);
    encoder->init(context);
    EXPECT_EQ(0, encoder->getDocument()->levelOfDetail);
    encoder->encode(context, 0);
    encoder->encode(context, 1);
    EXPECT_EQ(2u, encoder->getDocument()->memberGroups.size());
    // LOD 0 keeps the pathless mesh and drops the building's lod2 branch.
    encoder->finish(context);
    std::string const text = outputs.getText(L"gml_default_name.gml");
    EXPECT_NE(std::string::npos, text.find("con:OtherConstruction"));
    EXPECT_EQ(std::string::npos, text.find("bldg:lod2MultiSurface"));

    encoder->init(context);
    EXPECT_TRUE(encoder->getDocument()->memberGroups.empty());

    // Without options there is nothing to work with.
    std::unique_ptr<koltx::Encoder> bare(enctest::factory().create(nullptr, &outputs));
    EXPECT_THROW(bare->init(context), std::invalid_argument);
}
