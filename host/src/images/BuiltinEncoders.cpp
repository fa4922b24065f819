#include "BuiltinEncoders.h"

#include "JPGEncoderFactory.h"
#include "PNGEncoderFactory.h"
#include "koltx/ExtensionManager.h"

namespace koltx {

void registerBuiltinEncoders(ExtensionManager& manager) {
    // Made once and never destroyed, like the factories of loaded libraries: encoders they made
    // may outlive any manager.
    static PNGEncoderFactory* const png = new PNGEncoderFactory();
    static JPGEncoderFactory* const jpg = new JPGEncoderFactory();
    manager.registerFactory(png);
    manager.registerFactory(jpg);
}

} // namespace koltx
