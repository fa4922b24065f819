#include "koltx/ExtensionManager.h"
#include "kolt/EncoderInfo.h"
#include "koltx/FileExtensions.h"
#include "koltx/GenerateContext.h"
#include "koltx/Geometry.h"
#include "koltx/KOLTUtils.h"
#include "koltx/StatusException.h"

#include <ScratchDir.h>
#include <TestData.h>
#include <gtest/gtest.h>

#include <dlfcn.h>

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

namespace fs = std::filesystem;
using koltx::ExtensionManager;

namespace {

std::wstring const DECODER = L"com.morvane.kolt.codecs.CityGMLDecoder";
std::wstring const ENCODER = L"com.morvane.kolt.codecs.CityGMLEncoder";

// Expects loading to fail with a message that names the file and says why.
void expectLoadFailure(ExtensionManager& manager, std::string const& path,
                       std::string const& reason) {
    try {
        manager.loadExtensionLibrary(path);
        ADD_FAILURE() << "loaded " << path;
    } catch (koltx::StatusException const& error) {
        EXPECT_EQ(error.getStatus(), kolt::STATUS_EXTENSION_LOAD_FAILED);
        std::string const message = error.what();
        EXPECT_NE(message.find("'" + path + "'"), std::string::npos) << message;
        EXPECT_NE(message.find(reason), std::string::npos) << message;
    }
    EXPECT_TRUE(manager.getFactories().empty());
}

class LocalDecoderFactory : public koltx::DecoderFactory {
public:
    LocalDecoderFactory(std::wstring const& id, float merit)
        : koltx::DecoderFactory(kolt::CT_GEOMETRY, id, L"local", L"", koltx::FileExtensions(L"obj"),
                                nullptr, ER_NONE) {
        setMerit(merit);
    }
    koltx::Extension* create() const override { return nullptr; }
};

} // namespace

TEST(ExtensionManager, LoadsTheCodecAndCreatesExtensionsByIdAndExtension) {
    ExtensionManager manager;
    manager.loadExtensionLibrary(KOLT_CODEC_LIBRARY);
    ASSERT_EQ(manager.getFactories().size(), 2u);
    // A second load of the same file changes nothing.
    manager.loadExtensionLibrary(KOLT_CODEC_LIBRARY);
    EXPECT_EQ(manager.getFactories().size(), 2u);

    auto* factory = manager.getDecoderFactory(DECODER);
    ASSERT_NE(factory, nullptr);
    EXPECT_EQ(factory->getExtensionType(), koltx::Extension::ET_DECODER);
    EXPECT_EQ(manager.getEncoderFactory(DECODER), nullptr);
    EXPECT_EQ(manager.getDecoderFactoriesForURI(L"/data/City.GML").size(), 1u);
    EXPECT_TRUE(manager.getDecoderFactoriesForURI(L"/data/city.obj").empty());

    // By extension, case-insensitively, from a URI with query and fragment; then a real decode.
    auto const decoder = manager.createDecoderForURI(L"file:///x/y.GML?v=1#f");
    ASSERT_TRUE(decoder);
    fs::path const example = testsupport::sourceDir() / "examples" / "small_house.gml";
    std::ifstream stream(example, std::ios::binary);
    std::vector<std::shared_ptr<koltx::Content>> results;
    std::wstring warnings;
    decoder->decode(results, stream, nullptr, example.wstring(), nullptr, warnings);
    EXPECT_EQ(warnings, L"");
    ASSERT_EQ(results.size(), 1u);
    EXPECT_EQ(std::dynamic_pointer_cast<koltx::Geometry>(results[0])->getMeshes().size(), 5u);

    // By ID, and an encoder whose information comes through the host.
    EXPECT_TRUE(manager.createDecoder(DECODER));
    koltx::KOLTUtils::ObjectPtr<kolt::EncoderInfo const> info(manager.createEncoderInfo(ENCODER));
    ASSERT_TRUE(info);
    auto const encoder = manager.createEncoder(ENCODER, info->getDefaultOptions(), nullptr);
    EXPECT_EQ(encoder->getID(), ENCODER);
    // A host exception thrown inside the library is caught here by its type.
    koltx::GenerateContext context({}, nullptr, nullptr);
    encoder->init(context);
    try {
        encoder->finish(context);
        ADD_FAILURE() << "encoded without callbacks";
    } catch (koltx::StatusException const& error) {
        EXPECT_EQ(error.getStatus(), kolt::STATUS_CALLBACKS_UNUSABLE);
    }
    // The factory's own create() uses the default options.
    std::unique_ptr<koltx::Extension> plain(manager.getEncoderFactory(ENCODER)->create());
    auto* defaultEncoder = dynamic_cast<koltx::Encoder*>(plain.get());
    ASSERT_NE(defaultEncoder, nullptr);
    EXPECT_STREQ(defaultEncoder->getOptions()->getString(L"baseName"), L"gml_default_name");
}

TEST(ExtensionManager, TwoThreadsLoadingOneLibraryRegisterItOnce) {
    ExtensionManager().loadExtensionLibrary(TEST_EXTENSION_GOOD);
    void* library = dlopen(TEST_EXTENSION_GOOD, RTLD_NOW | RTLD_NOLOAD);
    ASSERT_NE(library, nullptr);
    auto const registrations = reinterpret_cast<int (*)()>(dlsym(library, "registrationCount"));
    ASSERT_NE(registrations, nullptr);
    int const before = registrations();
    int const rounds = 200;
    for (int round = 0; round < rounds; ++round) {
        ExtensionManager manager;
        std::atomic<int> waiting{2};
        auto const load = [&] {
            for (--waiting; waiting > 0;) {
            }
            manager.loadExtensionLibrary(TEST_EXTENSION_GOOD);
        };
        std::thread first(load), second(load);
        first.join();
        second.join();
    }
    EXPECT_EQ(registrations() - before, rounds);
    dlclose(library);
}

TEST(ExtensionManager, RefusesLibrariesWithoutExportsOrWithAnotherVersion) {
    ExtensionManager manager;
    expectLoadFailure(manager, TEST_EXTENSION_OLD_VERSION, "version 2.1 is not supported");
    expectLoadFailure(manager, TEST_EXTENSION_NO_EXPORTS, "not an extension library");
    expectLoadFailure(manager, "/no/such/library.so", "/no/such/library.so");
    expectLoadFailure(manager, TEST_EXTENSION_THROWING, "registration failed: no factories today");
}

TEST(ExtensionManager, LoadsEveryExtensionOfAFolder) {
    testsupport::ScratchDir const folder("extensions");
    fs::copy_file(TEST_EXTENSION_GOOD, folder / "good.so");
    fs::copy_file(TEST_EXTENSION_OLD_VERSION, folder / "old.so");
    fs::copy_file(TEST_EXTENSION_NO_EXPORTS, folder / "plain.so");
    std::ofstream(folder / "readme.txt") << "not a library";
    ExtensionManager manager;
    std::wstring warnings;
    EXPECT_EQ(manager.loadExtensionDirectory(folder.str(), &warnings), 1u);
    // Only the library that claims to be an extension but fails is reported.
    EXPECT_EQ(std::count(warnings.begin(), warnings.end(), L'\n'), 1);
    EXPECT_NE(warnings.find(L"old.so"), std::wstring::npos);
}

TEST(ExtensionManager, LookupOfUnknownIdsAndMeritOrder) {
    ExtensionManager manager;
    EXPECT_THROW(manager.createDecoder(L"nope"), koltx::StatusException);
    EXPECT_THROW(manager.createDecoderForURI(L"a.gml"), koltx::StatusException);
    EXPECT_THROW(manager.createEncoderInfo(L"nope"), koltx::StatusException);
    try {
        manager.createEncoder(L"com.x.Missing", nullptr, nullptr);
        ADD_FAILURE();
    } catch (koltx::StatusException const& error) {
        EXPECT_EQ(error.getStatus(), kolt::STATUS_EXTENSION_NOT_FOUND);
        EXPECT_NE(std::string(error.what()).find("com.x.Missing"), std::string::npos);
    }

    LocalDecoderFactory low(L"low", 0.5f), high(L"high", 2.0f), sameId(L"low", 1.0f);
    manager.registerFactory(&low);
    manager.registerFactory(&high);
    manager.registerFactory(&low); // once only
    manager.registerFactory(nullptr);
    manager.registerFactory(&sameId);
    EXPECT_EQ(manager.getFactories().size(), 3u);
    auto const candidates = manager.getDecoderFactoriesForURI(L"model.OBJ");
    ASSERT_EQ(candidates.size(), 3u);
    EXPECT_EQ(candidates[0], &high);
    EXPECT_EQ(candidates[1], &sameId);
    EXPECT_EQ(manager.getFactory(L"low"), &sameId);
    // A factory that makes no geometry decoder is a clear error, not a null decoder.
    EXPECT_THROW(manager.createDecoder(L"high"), koltx::StatusException);
}
