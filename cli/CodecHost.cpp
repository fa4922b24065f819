#include "CodecHost.h"

#include <koltx/ExtensionManager.h>

#include <algorithm>
#include <filesystem>

CodecHost::CodecHost(std::string const& extensionsDir)
    : extensionManager(koltx::ExtensionManager::instance()) {
    std::filesystem::path const dir = extensionsDir.empty() ? executableDir() : extensionsDir;
    path = (dir / LibraryName).string();
    std::vector<koltx::ExtensionFactory*> const before = extensionManager->getFactories();
    extensionManager->loadExtensionLibrary(path);
    for (koltx::ExtensionFactory* factory : extensionManager->getFactories()) {
        if (std::find(before.begin(), before.end(), factory) == before.end())
            factories.push_back(factory);
    }
}

std::string CodecHost::executableDir() {
    std::error_code error;
    std::filesystem::path const self = std::filesystem::read_symlink("/proc/self/exe", error);
    if (error)
        return ".";
    return self.parent_path().string();
}
