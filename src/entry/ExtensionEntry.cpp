#include "CityGMLCodec.h"

#include "encoder/CityGMLEncoderFactory.h"
#include "entry/CityGMLDecoderFactory.h"

#include <kolt/LogLevel.h>
#include <koltx/ExtensionManager.h>
#include <koltx/LogFormatter.h>

#include <exception>

#define KOLT_EXPORT __attribute__((visibility("default")))

extern "C" {

KOLT_EXPORT void registerExtensionFactories(koltx::ExtensionManager* manager) {
    // Nothing may reach the host: a failure is logged and what was not reached stays
    // unregistered. The decoder always goes first. The log text says "FBX" although this is the
    // CityGML codec: the codec's rules fix that text word for word, so it is not corrected.
    try {
        if (CityGMLDecoderFactory::getInstance() == nullptr)
            CityGMLDecoderFactory::setInstance(CityGMLDecoderFactory::createInstance());
        manager->registerFactory(CityGMLDecoderFactory::getInstance());
        if (CityGMLEncoderFactory::getInstance() == nullptr)
            CityGMLEncoderFactory::setInstance(createEncoderFactory());
        manager->registerFactory(CityGMLEncoderFactory::getInstance());
    } catch (std::exception const& e) {
        koltx::LogFormatter(kolt::LOG_ERROR,
                            std::string("caught exception during FBX extension registration: "), e);
    } catch (...) {
        koltx::LogFormatter(kolt::LOG_ERROR,
                            "caught unknown exception during FBX extension registration", nullptr);
    }
}

KOLT_EXPORT void unregisterExtensionFactories() {}

KOLT_EXPORT int32_t getVersionMajor() {
    return 3;
}

// Major and minor are one function under two names on purpose: the codec's interface requires
// both exports to answer 3, and one symbol under two names guarantees they never drift apart.
KOLT_EXPORT int32_t getVersionMinor() __attribute__((alias("getVersionMajor")));
}
