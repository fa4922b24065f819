// A whole generation as a host application runs it: the encoder extension is loaded from its
// library, gets the shapes of a context, and leaves its files on disk through file outputs.
#include "kolt/AttributeMapBuilder.h"
#include "kolt/EncoderInfo.h"
#include "koltx/DataBackend.h"
#include "koltx/ExtensionManager.h"
#include "koltx/FileOutputCallbacks.h"
#include "koltx/GenerateContext.h"
#include "koltx/GeometryBuilder.h"
#include "koltx/KOLTUtils.h"
#include "koltx/MaterialBuilder.h"
#include "koltx/MeshBuilder.h"
#include "koltx/Texture.h"
#include "koltx/URI.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <unistd.h>

namespace fs = std::filesystem;
using namespace koltx;

#ifdef KOLT_CODEC_LIBRARY

namespace {

std::shared_ptr<Texture> facade() {
    std::vector<uint8_t> pixels;
    for (int i = 0; i < 4 * 4; ++i)
        pixels.insert(pixels.end(), {uint8_t(i * 16), uint8_t(255 - i * 16), 40});
    return std::make_shared<Texture>(URI::create(L"file:///textures/facade.png"), 4, 4,
                                     Texture::FORMAT_RGB8, pixels);
}

std::shared_ptr<Geometry> texturedWall(std::shared_ptr<Texture> const& texture) {
    MaterialBuilder material;
    material.name(L"facade").diffuseMap({texture}, {L"textures/facade.png"});
    MeshBuilder mesh;
    mesh.addMaterial(material.createSharedAndReset(nullptr));
    uint32_t const face = mesh.addFace();
    double const corners[4][3] = {{0, 0, 0}, {10, 0, 0}, {10, 6, 0}, {0, 6, 0}};
    double const uvs[4][2] = {{0, 0}, {1, 0}, {1, 1}, {0, 1}};
    for (int k = 0; k < 4; ++k) {
        mesh.addFaceVertexIndex(face, mesh.addVertexCoords(corners[k]));
        mesh.addFaceUVIndex(face, 0, mesh.addUVCoords(0, uvs[k]));
    }
    GeometryBuilder geometry;
    geometry.addMesh(mesh.createSharedAndReset(nullptr));
    return geometry.createSharedAndReset(nullptr);
}

std::string read(fs::path const& path) {
    std::ifstream in(path, std::ios::binary);
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
}

} // namespace

TEST(EncodeToFiles, AnEncoderExtensionWritesItsDocumentAndTexturesToDisk) {
    ExtensionManager& manager = *ExtensionManager::instance();
    manager.loadExtensionLibrary(KOLT_CODEC_LIBRARY);
    std::wstring const id = L"com.morvane.kolt.codecs.CityGMLEncoder";

    KOLTUtils::AttributeMapBuilderPtr given(kolt::AttributeMapBuilder::create());
    given->setString(L"baseName", L"city");
    KOLTUtils::AttributeMapPtr givenMap(given->createAttributeMap());
    KOLTUtils::ObjectPtr<kolt::EncoderInfo const> info(manager.createEncoderInfo(id));
    kolt::AttributeMap const* validated = nullptr;
    kolt::Status status = 1;
    info->createValidatedOptions(givenMap.get(), &validated, &status);
    ASSERT_EQ(status, 0);
    KOLTUtils::AttributeMapPtr options(validated);

    fs::path const dir = fs::temp_directory_path() / ("kolt_e2e_" + std::to_string(::getpid()));
    fs::remove_all(dir);
    FileOutputCallbacks files(dir.string());
    auto texture = facade();
    KOLTUtils::AttributeMapBuilderPtr attributes(kolt::AttributeMapBuilder::create());
    attributes->setString(L"/enc/metaData/owner", L"city council");
    auto shape =
        std::make_shared<InitialShape>(L"lot", KOLTUtils::share(attributes->createAttributeMap()),
                                       std::vector<std::shared_ptr<Shape>>{std::make_shared<Shape>(
                                           texturedWall(texture), Shape::translation(100, 0, 0))});
    GenerateContext context({shape}, nullptr, &files);

    auto encoder = manager.createEncoder(id, options.get(), &files);
    encoder->init(context);
    encoder->encode(context, 0);
    encoder->finish(context);

    std::vector<std::string> names;
    for (auto const& entry : fs::directory_iterator(dir))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (std::vector<std::string>{"city.gml", "facade.png"}));

    std::string const document = read(dir / "city.gml");
    EXPECT_EQ(document.rfind("<?xml", 0), 0u);
    EXPECT_NE(document.find("facade.png"), std::string::npos);
    EXPECT_NE(document.find("city council"), std::string::npos);
    // The leaf's transform was applied: x runs from 100 to 110.
    EXPECT_NE(document.find(" 110.000 "), std::string::npos);
    EXPECT_EQ(document.find(" 10.000 "), std::string::npos);

    auto back =
        DataBackend::resolveTexture(nullptr, (dir / "facade.png").wstring(), nullptr, nullptr);
    ASSERT_TRUE(back);
    EXPECT_TRUE(*back == *texture);
    if (!HasFailure())
        fs::remove_all(dir);
}

#else

TEST(EncodeToFiles, AnEncoderExtensionWritesItsDocumentAndTexturesToDisk) {
    GTEST_SKIP() << "the codec library is not part of this build";
}

#endif
