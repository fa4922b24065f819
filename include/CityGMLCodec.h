#pragma once

#include <cstdint>

namespace koltx {
class ExtensionManager;
}

// The functions a host looks up after loading the codec library. Nothing else is exported.
extern "C" {

// Hands the codec's factories to `manager`: the decoder first. Never throws; a failure is
// logged and what was not reached stays unregistered.
void registerExtensionFactories(koltx::ExtensionManager* manager);

// Does nothing: the factories live until the process ends.
void unregisterExtensionFactories();

// The host interface version the codec was built for: 3.3.
int32_t getVersionMajor();
int32_t getVersionMinor();
}
