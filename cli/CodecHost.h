#pragma once

#include <string>
#include <vector>

namespace koltx {
class ExtensionFactory;
class ExtensionManager;
} // namespace koltx

// The host side of the tool: the process-wide extension manager with the codec library loaded
// into it, exactly as any host application would load it.
class CodecHost {
public:
    static constexpr char const* LibraryName = "libcitygml_codec.so";

    // Loads the codec from `extensionsDir`, or from the executable's folder when it is empty.
    // Throws std::runtime_error with the host's message when the library cannot be loaded.
    explicit CodecHost(std::string const& extensionsDir);

    koltx::ExtensionManager& manager() const { return *extensionManager; }
    // The factories that the codec registered, in registration order.
    std::vector<koltx::ExtensionFactory*> const& codecFactories() const { return factories; }
    std::string const& libraryPath() const { return path; }

    // The folder of the running executable.
    static std::string executableDir();

private:
    koltx::ExtensionManager* extensionManager;
    std::vector<koltx::ExtensionFactory*> factories;
    std::string path;
};
