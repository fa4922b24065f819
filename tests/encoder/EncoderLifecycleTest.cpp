#include "EncoderRun.h"

#include <gml/RootNode.h>

#include <koltx/Log.h>
#include <koltx/MemoryLogSink.h>
#include <koltx/StatusException.h>

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
    EXPECT_EQ("<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
              "<core:CityModel xmlns=\"http://www.opengis.net/citygml/3.0\" "
              "xmlns:gml=\"http://www.opengis.net/gml/3.2\" "
              "xmlns:xal=\"urn:oasis:names:tc:ciq:xal:3\" "
              "xmlns:xlink=\"http://www.w3.org/1999/xlink\" "
              "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\">\n"
              "</core:CityModel>\n",
              text);
}

TEST(EncoderLifecycle, OneBuildingDocument) {
    std::string const text = encodeToText({oneSquareShape(buildingPath)});
    EXPECT_EQ(R"(<?xml version="1.0" encoding="UTF-8" standalone="yes"?>
<core:CityModel xmlns="http://www.opengis.net/citygml/2.0" xmlns:bldg="http://www.opengis.net/citygml/building/2.0" xmlns:core="http://www.opengis.net/citygml/2.0" xmlns:gml="http://www.opengis.net/gml" xmlns:schemaLocation="http://www.opengis.net/citygml/building/2.0 http://schemas.opengis.net/citygml/building/2.0/building.xsd http://www.opengis.net/citygml/2.0 https://schemas.opengis.net/citygml/2.0/core.xsd" xmlns:xal="urn:oasis:names:tc:ciq:xal:3" xmlns:xlink="http://www.w3.org/1999/xlink" xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance">
 <core:cityObjectMember>
  <bldg:Building>
  <gml:boundedBy>
   <gml:Envelope srsDimension="3">
    <gml:lowerCorner>1.000 -4.000 2.000 </gml:lowerCorner>
    <gml:upperCorner>2.000 -3.000 2.000 </gml:upperCorner>
   </gml:Envelope>
  </gml:boundedBy>
   <bldg:lod2MultiSurface>
    <gml:MultiSurface gml:id="ms1">
     <gml:surfaceMember>
      <gml:Polygon gml:id="ID_poly0">
       <gml:exterior>
        <gml:LinearRing gml:id="ID_poly0.ID">
        <gml:posList srsDimension="3">
        1.000 -3.000 2.000 2.000 -3.000 2.000 2.000 -4.000 2.000 1.000 -4.000 2.000 1.000 -3.000 2.000 </gml:posList>
        </gml:LinearRing>
       </gml:exterior>
      </gml:Polygon>
     </gml:surfaceMember>
    </gml:MultiSurface>
   </bldg:lod2MultiSurface>
  </bldg:Building>
 </core:cityObjectMember>
</core:CityModel>
)",
              enctest::maskIdentifiers(text));
}

TEST(EncoderLifecycle, PathlessMeshDocumentWithSrsAndPrecision) {
    std::string const text = encodeToText({oneSquareShape(L"plain")}, [](auto& b) {
        b.setString(L"srsName", L"EPSG:25832");
        b.setFloat(L"vertexPrecision", 0.00001);
        b.setString(L"baseName", L"a");
    });
    EXPECT_EQ(R"(<?xml version="1.0" encoding="UTF-8" standalone="yes"?>
<core:CityModel xmlns="http://www.opengis.net/citygml/3.0" xmlns:con="http://www.opengis.net/citygml/construction/3.0" xmlns:core="http://www.opengis.net/citygml/3.0" xmlns:gen="http://www.opengis.net/citygml/generics/3.0" xmlns:gml="http://www.opengis.net/gml/3.2" xmlns:schemaLocation="http://www.opengis.net/citygml/construction/3.0 http://schemas.opengis.net/citygml/construction/3.0/construction.xsd http://www.opengis.net/citygml/3.0 https://schemas.opengis.net/citygml/3.0/core.xsd http://www.opengis.net/citygml/generics/3.0 http://schemas.opengis.net/citygml/generics/3.0/generics.xsd" xmlns:xal="urn:oasis:names:tc:ciq:xal:3" xmlns:xlink="http://www.w3.org/1999/xlink" xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance">
 <core:cityObjectMember>
  <con:OtherConstruction>
  <gml:boundedBy>
   <gml:Envelope srsName="EPSG:25832" srsDimension="3">
    <gml:lowerCorner>1.00000 -4.00000 2.00000 </gml:lowerCorner>
    <gml:upperCorner>2.00000 -3.00000 2.00000 </gml:upperCorner>
   </gml:Envelope>
  </gml:boundedBy>
   <core:boundary>
    <gen:GenericThematicSurface>
     <core:lod0MultiSurface>
      <gml:MultiSurface>
       <gml:surfaceMember>
        <gml:Polygon gml:id="ID_poly0">
         <gml:exterior>
          <gml:LinearRing gml:id="ID_poly0.ID">
          <gml:posList srsDimension="3">
          1.00000 -3.00000 2.00000 2.00000 -3.00000 2.00000 2.00000 -4.00000 2.00000 1.00000 -4.00000 2.00000 1.00000 -3.00000 2.00000 </gml:posList>
          </gml:LinearRing>
         </gml:exterior>
        </gml:Polygon>
       </gml:surfaceMember>
      </gml:MultiSurface>
     </core:lod0MultiSurface>
    </gen:GenericThematicSurface>
   </core:boundary>
  </con:OtherConstruction>
 </core:cityObjectMember>
</core:CityModel>
)",
              enctest::maskIdentifiers(text));
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
