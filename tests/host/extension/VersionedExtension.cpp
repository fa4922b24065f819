// The smallest library the host takes for an extension: the version exports and a registration
// that offers no factory but counts its calls, or throws. The loader's tests build it in
// several variants; what an extension offers is tested with the codec itself.
#include "koltx/ExtensionManager.h"

#include <atomic>
#include <stdexcept>

#ifndef TEST_EXTENSION_MAJOR
#error "TEST_EXTENSION_MAJOR must be defined"
#endif

namespace {

std::atomic<int> registrations{0};

} // namespace

extern "C" {

__attribute__((visibility("default"))) int32_t getVersionMajor() {
    return TEST_EXTENSION_MAJOR;
}

__attribute__((visibility("default"))) int32_t getVersionMinor() {
    return 1;
}

__attribute__((visibility("default"))) void registerExtensionFactories(koltx::ExtensionManager*) {
#ifdef TEST_EXTENSION_THROWS
    throw std::runtime_error("no factories today");
#else
    ++registrations;
#endif
}

__attribute__((visibility("default"))) void unregisterExtensionFactories() {}

// How often the library registered itself, for the test that loads it from two threads at once.
__attribute__((visibility("default"))) int registrationCount() {
    return registrations;
}
}
