#include "CityGMLCodec.h"
#include "decoder/CityGMLDecoder.h"
#include "entry/CityGMLDecoderFactory.h"

#include <koltx/ExtensionManager.h>
#include <koltx/Log.h>
#include <koltx/MemoryLogSink.h>

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

namespace {

// Records what is registered; can be told to throw on its first call.
class RecordingManager : public koltx::ExtensionManager {
public:
    enum class Fault { None, StdException, Integer };
    Fault fault = Fault::None;
    std::vector<koltx::ExtensionFactory*> registered;

    void registerFactory(koltx::ExtensionFactory* factory) override {
        registered.push_back(factory);
        if (fault == Fault::StdException)
            throw std::runtime_error("x");
        if (fault == Fault::Integer)
            throw 42;
        koltx::ExtensionManager::registerFactory(factory);
    }
};

struct CapturedLog {
    std::shared_ptr<koltx::MemoryLogSink> sink = std::make_shared<koltx::MemoryLogSink>();
    koltx::Log::Scope scope{sink, kolt::LOG_TRACE};
};

TEST(Entry, VersionsAreThreeAndThree) {
    EXPECT_EQ(getVersionMajor(), 3);
    EXPECT_EQ(getVersionMinor(), 3);
}

TEST(Entry, RegistersTheDecoderFactoryOnceBuiltAndEveryTimeCalled) {
    CapturedLog log;
    RecordingManager manager;
    registerExtensionFactories(&manager);
    CityGMLDecoderFactory* const factory = CityGMLDecoderFactory::getInstance();
    ASSERT_NE(factory, nullptr);
    registerExtensionFactories(&manager);
    EXPECT_EQ(CityGMLDecoderFactory::getInstance(), factory);
    // Decoder first, then the encoder, on each call; each factory is built once.
    ASSERT_EQ(manager.registered.size(), 4u);
    EXPECT_EQ(manager.registered[0], factory);
    EXPECT_EQ(manager.registered[2], factory);
    EXPECT_EQ(manager.registered[1], manager.registered[3]);
    EXPECT_NE(manager.registered[1], factory);
    EXPECT_EQ(manager.registered[1]->getID(), L"com.morvane.kolt.codecs.CityGMLEncoder");
    EXPECT_TRUE(log.sink->getEntries().empty());

    EXPECT_EQ(factory->getID(), L"com.morvane.kolt.codecs.CityGMLDecoder");
    EXPECT_EQ(factory->getName(), L"CityGML Decoder");
    EXPECT_EQ(factory->getDescription(), L"Decoder for the CityGML format");
    EXPECT_EQ(factory->getContentType(), kolt::CT_GEOMETRY);
    EXPECT_EQ(factory->getExtensionType(), koltx::Extension::ET_DECODER);
    EXPECT_EQ(factory->getMerit(), 0.0f);
    EXPECT_TRUE(factory->canHandleURI(L"/data/city.GML"));
    EXPECT_FALSE(factory->canHandleURI(L"/data/city.obj"));
    EXPECT_EQ(manager.getDecoderFactory(L"com.morvane.kolt.codecs.CityGMLDecoder"), factory);

    std::unique_ptr<koltx::Extension> a(factory->create());
    std::unique_ptr<koltx::Extension> b(factory->create());
    EXPECT_NE(a, b);
    EXPECT_NE(dynamic_cast<CityGMLDecoder*>(a.get()), nullptr);
    EXPECT_EQ(a->getContentType(), kolt::CT_GEOMETRY);

    unregisterExtensionFactories();
    EXPECT_EQ(CityGMLDecoderFactory::getInstance(), factory);
    std::unique_ptr<koltx::Extension> c(factory->create());
    EXPECT_NE(c, nullptr);
}

TEST(Entry, RegistrationFailuresAreLoggedNotThrown) {
    {
        CapturedLog log;
        RecordingManager manager;
        manager.fault = RecordingManager::Fault::StdException;
        EXPECT_NO_THROW(registerExtensionFactories(&manager));
        // Nothing after the failing call is tried.
        EXPECT_EQ(manager.registered.size(), 1u);
        auto const entries = log.sink->getEntries();
        ASSERT_EQ(entries.size(), 1u);
        EXPECT_EQ(entries[0].first, kolt::LOG_ERROR);
        EXPECT_EQ(entries[0].second, "caught exception during FBX extension registration: x");
    }
    {
        CapturedLog log;
        RecordingManager manager;
        manager.fault = RecordingManager::Fault::Integer;
        EXPECT_NO_THROW(registerExtensionFactories(&manager));
        auto const entries = log.sink->getEntries();
        ASSERT_EQ(entries.size(), 1u);
        EXPECT_EQ(entries[0].first, kolt::LOG_ERROR);
        EXPECT_EQ(entries[0].second, "caught unknown exception during FBX extension registration");
    }
}

} // namespace
