#include "GmlTestSupport.h"

#include "gml/BasicMaterialAppearanceMemberNode.h"
#include "gml/BuildingTypeNode.h"
#include "gml/CityModelDocument.h"
#include "gml/Envelope.h"
#include "gml/GeometryNode.h"
#include "gml/Identifiers.h"
#include "gml/PolygonNode.h"
#include "gml/ReliefComponentType.h"
#include "gml/TextureAppearanceMemberNode.h"

#include <koltx/DefaultNamePreparator.h>

#include <TestData.h>
#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <regex>
#include <sstream>

namespace {

namespace fs = std::filesystem;

using gml::CityElementNode;
using gml::GeometryNode;
using gml::PolygonNode;

// What these documents do on purpose that a schema-checking tool reports. Every other
// message is a defect.
struct Deviation {
    std::regex pattern;
    const char* reason;
};

const Deviation knownDeviations[] = {
    {std::regex("xmlns:schemaLocation: '[^']*' is not a valid URI"),
     "the list of namespaces and schema files is declared as a namespace named "
     "schemaLocation, not as xsi:schemaLocation, and a list with blanks is no URI"},
};

// A relief feature writes its "dem:lod" first, ahead of "gml:boundedBy", although the schema
// wants the envelope first.
const std::regex reliefLodBeforeEnvelope(
    "Element '\\{http://www\\.opengis\\.net/gml[^}]*\\}boundedBy': This element is not "
    "expected\\. Expected is \\( \\{http://www\\.opengis\\.net/citygml/relief/[23]\\.0\\}"
    "reliefComponent \\)");

// Attributes stand ahead of all child elements. In CityGML 3.0 a building's own properties
// (here bldg:storeysAboveGround) come after the space boundaries, so a boundary behind such an
// attribute is out of place.
const std::regex propertyBeforeBoundary(
    "Element '\\{http://www\\.opengis\\.net/citygml/3\\.0\\}boundary': This element is not "
    "expected\\.");

struct XmlLintResult {
    int exitCode = -1;
    std::vector<std::string> unexpected;
    std::vector<std::string> all;
};

fs::path schemaFor(int version) {
    const fs::path schemas = testsupport::testDataDir() / "schemas" / "schemas.opengis.net";
    return version == 2 ? schemas / "citygml/profiles/base/2.0/CityGML.xsd"
                        : schemas / "citygml/3.0/CityGML.xsd";
}

bool haveXmlLint() {
    return std::system("xmllint --version > /dev/null 2>&1") == 0;
}

XmlLintResult validate(const std::string& document, int version, const std::string& name) {
    const fs::path folder =
        fs::temp_directory_path() / ("gml_schema_" + std::to_string(::getpid()));
    fs::create_directories(folder);
    const fs::path file = folder / (name + ".gml");
    const fs::path log = folder / (name + ".log");
    std::ofstream(file, std::ios::binary) << document;
    const std::string command = "xmllint --noout --nonet --schema '" + schemaFor(version).string() +
                                "' '" + file.string() + "' > '" + log.string() + "' 2>&1";
    XmlLintResult result;
    const int status = std::system(command.c_str());
    result.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    std::ifstream in(log);
    for (std::string line; std::getline(in, line);) {
        result.all.push_back(line);
        // Messages name the file first; the lines between repeat the source and point at it.
        if (line.rfind(file.string(), 0) != 0)
            continue;
        if (line == file.string() + " validates" || line == file.string() + " fails to validate")
            continue;
        bool known = false;
        for (const Deviation& deviation : knownDeviations)
            known = known || std::regex_search(line, deviation.pattern);
        if (!known)
            result.unexpected.push_back(line);
    }
    fs::remove_all(folder);
    return result;
}

std::string join(const std::vector<std::string>& lines) {
    std::string text;
    for (const auto& line : lines)
        text += line + "\n";
    return text;
}

class SchemaValidationTest : public ::testing::Test {
protected:
    void SetUp() override {
        REQUIRE_TESTDATA();
        if (!fs::exists(schemaFor(2)) || !fs::exists(schemaFor(3)))
            GTEST_SKIP() << "CityGML schemas not found; skipping";
        if (!haveXmlLint())
            GTEST_SKIP() << "xmllint not found; skipping";
    }

    // A node for a plain path step, hung below `parent`.
    static std::shared_ptr<CityElementNode> step(const std::shared_ptr<CityElementNode>& parent,
                                                 const std::wstring& tag) {
        auto node = std::make_shared<CityElementNode>(gml::newUuidString(), false, tag);
        parent->addChild(node);
        return node;
    }

    // A geometry element with one polygon per face of `mesh`, each registered with `member`.
    static std::shared_ptr<GeometryNode> geometry(const std::shared_ptr<CityElementNode>& parent,
                                                  const std::wstring& tag,
                                                  const std::shared_ptr<koltx::Mesh>& mesh,
                                                  gml::AppearanceMemberNode* member,
                                                  const std::wstring& surfaceTag = L"") {
        auto node = std::make_shared<GeometryNode>(gml::newUuidString(), true, tag, mesh);
        for (std::uint32_t face = 0; face < mesh->getFaceCount(); ++face) {
            auto polygon = std::make_shared<PolygonNode>(mesh, gml::newUuidString(), face,
                                                         surfaceTag.empty() ? tag : surfaceTag);
            if (member)
                member->addTarget(polygon->polygonId(), polygon->ringId, mesh, face);
            node->addChild(polygon);
        }
        parent->addChild(node);
        return node;
    }

    // A building with a textured wall, a coloured roof, a solid and generic attributes, and a
    // relief; tags in the vocabulary of `version`.
    std::string buildDocument(int version, bool reliefEnvelope, bool qualifiedAttribute) {
        const bool modern = version == 3;
        auto envelope = std::make_shared<gml::Envelope>(
            gml::Envelope{koltx::BoundingBox(std::vector<double>{0, 0, -10}.data(),
                                             std::vector<double>{10, 10, 0}.data()),
                          L"EPSG:25832"});
        gml::AttributeMap attributes{
            {L"Floors", L"3"}, {L"Height", L"12.5"}, {L"Name", L"Tower \u00e9"}};
        if (qualifiedAttribute)
            attributes[L"bldg:storeysAboveGround"] = L"3";
        auto building = std::make_shared<gml::BuildingTypeNode>(attributes, envelope, L"b1", false,
                                                                L"bldg:Building");
        auto wallMesh = gmltest::makeMesh({{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 10, 0}},
                                          {{0, 1, 2, 3}}, {{0, 0, 1, 0, 1, 1, 0, 1}});
        auto roofMesh = gmltest::makeMesh({{0, 10, 0}, {10, 10, 0}, {10, 10, -10}, {0, 10, -10}},
                                          {{0, 1, 2, 3}, {0, 2, 3}});
        auto solidMesh = gmltest::makeMesh({{0, 0, 0}, {1, 0, 0}, {0, 0, -1}, {0, 1, 0}},
                                           {{0, 2, 1}, {0, 1, 3}, {1, 2, 3}, {0, 3, 2}});

        auto texture = std::make_shared<gml::TextureAppearanceMemberNode>(
            L"wall", gmltest::makeTexture(3), L"wall.png");
        auto colour = std::make_shared<gml::BasicMaterialAppearanceMemberNode>(
            koltx::MaterialBuilder()
                .name(L"roof")
                .ambientColor({0.2, 0.1, 0.1})
                .diffuseColor({0.8, 0.2, 0.2})
                .shininess(0.25)
                .opacity(0.5)
                .createSharedAndReset(nullptr));

        const std::wstring boundary = modern ? L"core:boundary" : L"bldg:boundedBy";
        const std::wstring surfacePrefix = modern ? L"con:" : L"bldg:";
        const std::wstring lodPrefix = modern ? L"core:" : L"bldg:";
        // Inserted in an order that the sort has to repair.
        auto solid = step(building, lodPrefix + L"lod2Solid");
        auto solidGeometry =
            std::make_shared<GeometryNode>(gml::newUuidString(), true, L"gml:Solid", solidMesh);
        solid->addChild(solidGeometry);
        // GML 3.2 wants a shell around the faces of a solid, GML 3.1.1 takes a composite.
        geometry(solidGeometry, modern ? L"gml:Shell" : L"gml:CompositeSurface", solidMesh,
                 nullptr);
        auto wall = step(step(building, boundary), surfacePrefix + L"WallSurface");
        geometry(step(wall, lodPrefix + L"lod2MultiSurface"), L"gml:MultiSurface", wallMesh,
                 texture.get());
        auto roof = step(step(building, boundary), surfacePrefix + L"RoofSurface");
        auto roofMulti = std::make_shared<GeometryNode>(gml::newUuidString(), true,
                                                        L"gml:MultiSurface", roofMesh);
        step(roof, lodPrefix + L"lod2MultiSurface")->addChild(roofMulti);
        geometry(roofMulti, L"gml:OrientableSurface", roofMesh, colour.get());

        // A relief: one triangulated surface below a TIN relief.
        auto relief = std::make_shared<gml::ReliefComponentType>(
            gml::AttributeMap(), reliefEnvelope ? envelope : nullptr, L"r1", false,
            L"dem:ReliefFeature");
        auto tin = step(step(relief, L"dem:reliefComponent"), L"dem:TINRelief");
        auto groundMesh = gmltest::makeMesh({{0, 0, 0}, {10, 0, 0}, {10, 0, -10}, {0, 0, -10}},
                                            {{0, 1, 2}, {0, 2, 3}});
        geometry(step(tin, L"dem:tin"), L"gml:TriangulatedSurface", groundMesh, colour.get());

        // A generic object with a patch surface and generic attributes of every type.
        auto generic = std::make_shared<gml::RootNode>(
            gml::AttributeMap{{L"count", L"-4"}, {L"ratio", L"0.5"}, {L"label", L"a b"}}, envelope,
            L"g1", false, modern ? L"gen:GenericOccupiedSpace" : L"gen:GenericCityObject");
        auto patches =
            gmltest::makeMesh({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}}, {{0, 1, 2}}, {{0, 0, 1, 0, 1, 1}});
        std::shared_ptr<CityElementNode> patchParent;
        if (!modern) {
            patchParent = step(generic, L"gen:lod2Geometry");
        } else {
            // CityGML 3.0 has multi-surfaces only here; the surface stands as one member.
            patchParent = step(generic, L"core:lod2MultiSurface");
            auto multi = std::make_shared<GeometryNode>(gml::newUuidString(), true,
                                                        L"gml:MultiSurface", patches);
            patchParent->addChild(multi);
            patchParent = multi;
        }
        geometry(patchParent, L"gml:Surface", patches, texture.get());

        std::shared_ptr<koltx::EncodePreparator> preparator;
        koltx::DefaultNamePreparator names(L"_", L"_");
        CityModelDocument document(2, preparator, names, names.newNamespace(), nullptr);
        document.version = version;
        document.usedPrefixes = {L"app", L"bldg", L"core", L"dem", L"gen", L"gml"};
        if (modern)
            document.usedPrefixes.insert(L"con");
        document.memberGroups.push_back({building, relief});
        document.memberGroups.push_back({generic});
        document.appearanceMembers = {texture, colour};
        std::ostringstream out;
        writeCityModel(document, out, 3);
        return out.str();
    }
};

TEST_F(SchemaValidationTest, Version2DocumentValidates) {
    const std::string document = buildDocument(2, false, true);
    const XmlLintResult result = validate(document, 2, "v2");
    EXPECT_TRUE(result.unexpected.empty()) << join(result.all) << document;
    EXPECT_EQ(result.exitCode, 0) << join(result.all);
    // The wall polygons stand in a textured member and the roof in a coloured one.
    EXPECT_NE(document.find("<app:ParameterizedTexture>"), std::string::npos);
    EXPECT_NE(document.find("<gml:OrientableSurface>"), std::string::npos);
    EXPECT_NE(document.find("<gml:trianglePatches>"), std::string::npos);
}

TEST_F(SchemaValidationTest, Version3DocumentValidates) {
    const std::string document = buildDocument(3, false, false);
    const XmlLintResult result = validate(document, 3, "v3");
    EXPECT_TRUE(result.unexpected.empty()) << join(result.all) << document;
    EXPECT_EQ(result.exitCode, 0) << join(result.all);
    EXPECT_NE(document.find("<app:TextureAssociation>"), std::string::npos);
    EXPECT_NE(document.find("<core:genericAttribute>"), std::string::npos);
}

TEST_F(SchemaValidationTest, DeliberateDeviationsAreTheOnlyOthers) {
    for (int version : {2, 3}) {
        const XmlLintResult result = validate(buildDocument(version, true, version == 3), version,
                                              "deviations" + std::to_string(version));
        ASSERT_EQ(result.unexpected.size(), version == 3 ? 2u : 1u) << join(result.all);
        std::size_t relief = 0;
        std::size_t property = 0;
        for (const std::string& line : result.unexpected) {
            relief += std::regex_search(line, reliefLodBeforeEnvelope) ? 1 : 0;
            property += std::regex_search(line, propertyBeforeBoundary) ? 1 : 0;
        }
        EXPECT_EQ(relief, 1u) << join(result.unexpected);
        EXPECT_EQ(property, version == 3 ? 1u : 0u) << join(result.unexpected);
    }
}

} // namespace
