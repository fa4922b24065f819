#pragma once

namespace koltx {

class ExtensionManager;

// Registers the encoders that the host brings itself (the image encoders).
void registerBuiltinEncoders(ExtensionManager& manager);

} // namespace koltx
