#include "koltx/ExtensionManager.h"

#include "encoding/EncoderInfoView.h"
#include "images/BuiltinEncoders.h"
#include "kolt/EncoderInfo.h"
#include "kolt/StringUtils.h"
#include "koltx/StatusException.h"

#include <dlfcn.h>

#include <algorithm>
#include <filesystem>

namespace koltx {

namespace {

using VersionFunction = int32_t (*)();
using RegisterFunction = void (*)(ExtensionManager*);

StatusException loadError(std::string const& path, std::string const& reason) {
    return StatusException(kolt::STATUS_EXTENSION_LOAD_FAILED,
                           "Cannot load extension library '" + path + "': " + reason);
}

std::string dlErrorText() {
    char const* text = dlerror();
    return text != nullptr ? text : "unknown error";
}

StatusException notFound(std::wstring const& id, char const* what) {
    return StatusException(kolt::STATUS_EXTENSION_NOT_FOUND,
                           std::string("No ") + what + " with ID '" +
                               kolt::StringUtils::toUTF8(id) + "'");
}

} // namespace

ExtensionManager* ExtensionManager::instance() {
    // Never destroyed: factories and libraries must outlive every static that may still use them.
    static ExtensionManager* const manager = [] {
        auto* created = new ExtensionManager();
        registerBuiltinEncoders(*created);
        return created;
    }();
    return manager;
}

ExtensionManager::ExtensionManager() = default;

ExtensionManager::~ExtensionManager() {
    // The libraries stay loaded: objects made by their factories may still be alive.
    for (auto const& library : libraries) {
        using UnregisterFunction = void (*)();
        auto const unregister = reinterpret_cast<UnregisterFunction>(
            dlsym(library.handle, "unregisterExtensionFactories"));
        if (unregister != nullptr)
            unregister();
    }
}

void ExtensionManager::registerFactory(ExtensionFactory* factory) {
    if (factory == nullptr)
        return;
    std::lock_guard<std::mutex> lock(mutex);
    if (std::find(factories.begin(), factories.end(), factory) == factories.end())
        factories.push_back(factory);
}

void ExtensionManager::loadExtensionLibrary(std::string const& path) {
    std::string canonical = path;
    std::error_code error;
    auto const resolved = std::filesystem::weakly_canonical(path, error);
    if (!error)
        canonical = resolved.string();
    // One load at a time, so that two threads loading one library register it once.
    std::lock_guard<std::recursive_mutex> loading(loadMutex);
    {
        std::lock_guard<std::mutex> lock(mutex);
        for (auto const& library : libraries)
            if (library.path == canonical)
                return;
    }
    // A path without "/" would make dlopen search the library path instead of this file.
    std::string const openPath =
        canonical.find('/') == std::string::npos ? "./" + canonical : canonical;
    void* handle = dlopen(openPath.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (handle == nullptr)
        throw loadError(path, dlErrorText());

    auto const major = reinterpret_cast<VersionFunction>(dlsym(handle, "getVersionMajor"));
    auto const minor = reinterpret_cast<VersionFunction>(dlsym(handle, "getVersionMinor"));
    auto const registerFactories =
        reinterpret_cast<RegisterFunction>(dlsym(handle, "registerExtensionFactories"));
    if (major == nullptr || minor == nullptr || registerFactories == nullptr) {
        dlclose(handle);
        throw loadError(path, "it lacks getVersionMajor, getVersionMinor or "
                              "registerExtensionFactories; it is not an extension library");
    }
    int32_t const majorVersion = major();
    int32_t const minorVersion = minor();
    if (majorVersion != SUPPORTED_VERSION_MAJOR) {
        dlclose(handle);
        throw loadError(path, "version " + std::to_string(majorVersion) + "." +
                                  std::to_string(minorVersion) + " is not supported (need " +
                                  std::to_string(SUPPORTED_VERSION_MAJOR) + ".x)");
    }
    {
        std::lock_guard<std::mutex> lock(mutex);
        libraries.push_back({canonical, handle});
    }
    // The library stays loaded even if its registration fails: factories it registered before
    // the failure may be in use.
    try {
        registerFactories(this);
    } catch (std::exception const& error) {
        throw loadError(path, std::string("registration failed: ") + error.what());
    } catch (...) {
        throw loadError(path, "registration failed with an unknown exception");
    }
}

size_t ExtensionManager::loadExtensionDirectory(std::string const& directory,
                                                std::wstring* warnings) {
    std::error_code error;
    std::vector<std::string> candidates;
    for (auto const& entry : std::filesystem::directory_iterator(directory, error)) {
        std::string const name = entry.path().filename().string();
        if (entry.is_regular_file(error) && name.size() > 3 &&
            name.compare(name.size() - 3, 3, ".so") == 0)
            candidates.push_back(entry.path().string());
    }
    if (error && warnings != nullptr)
        *warnings += L"Cannot read extension folder '" + kolt::StringUtils::toUTF16(directory) +
                     L"': " + kolt::StringUtils::toUTF16(error.message()) + L"\n";
    std::sort(candidates.begin(), candidates.end());
    size_t loaded = 0;
    for (auto const& candidate : candidates) {
        // Only libraries that claim to be extensions are tried; others are no error.
        void* probe = dlopen(candidate.c_str(), RTLD_LAZY | RTLD_LOCAL);
        bool const isExtension =
            probe != nullptr && dlsym(probe, "registerExtensionFactories") != nullptr;
        if (probe != nullptr)
            dlclose(probe);
        if (!isExtension)
            continue;
        try {
            loadExtensionLibrary(candidate);
            ++loaded;
        } catch (StatusException const& exception) {
            if (warnings != nullptr)
                *warnings += kolt::StringUtils::toUTF16(exception.what()) + L"\n";
        }
    }
    return loaded;
}

std::vector<ExtensionFactory*> ExtensionManager::getFactories() const {
    std::lock_guard<std::mutex> lock(mutex);
    return factories;
}

template <typename Kind> Kind* ExtensionManager::findBest(std::wstring const& id) const {
    std::lock_guard<std::mutex> lock(mutex);
    Kind* best = nullptr;
    for (auto* factory : factories) {
        auto* candidate = dynamic_cast<Kind*>(factory);
        if (candidate != nullptr && candidate->getID() == id &&
            (best == nullptr || candidate->getMerit() > best->getMerit()))
            best = candidate;
    }
    return best;
}

ExtensionFactory* ExtensionManager::getFactory(std::wstring const& id) const {
    return findBest<ExtensionFactory>(id);
}

DecoderFactory* ExtensionManager::getDecoderFactory(std::wstring const& id) const {
    return findBest<DecoderFactory>(id);
}

EncoderFactory* ExtensionManager::getEncoderFactory(std::wstring const& id) const {
    return findBest<EncoderFactory>(id);
}

std::vector<DecoderFactory*>
ExtensionManager::getDecoderFactoriesForURI(std::wstring const& pathOrURI) const {
    std::vector<DecoderFactory*> result;
    {
        std::lock_guard<std::mutex> lock(mutex);
        for (auto* factory : factories) {
            auto* decoder = dynamic_cast<DecoderFactory*>(factory);
            if (decoder != nullptr && decoder->canHandleURI(pathOrURI))
                result.push_back(decoder);
        }
    }
    std::stable_sort(result.begin(), result.end(), [](DecoderFactory* a, DecoderFactory* b) {
        return a->getMerit() > b->getMerit();
    });
    return result;
}

namespace {

std::shared_ptr<GeometryDecoder> makeDecoder(DecoderFactory* factory) {
    std::unique_ptr<Extension> extension(factory->create());
    auto* decoder = dynamic_cast<GeometryDecoder*>(extension.get());
    if (decoder == nullptr)
        throw StatusException(kolt::STATUS_NOT_SUPPORTED,
                              "Extension '" + kolt::StringUtils::toUTF8(factory->getID()) +
                                  "' did not create a geometry decoder");
    extension.release();
    return std::shared_ptr<GeometryDecoder>(decoder);
}

} // namespace

std::shared_ptr<GeometryDecoder> ExtensionManager::createDecoder(std::wstring const& id) const {
    DecoderFactory* factory = getDecoderFactory(id);
    if (factory == nullptr)
        throw notFound(id, "decoder");
    return makeDecoder(factory);
}

std::shared_ptr<GeometryDecoder>
ExtensionManager::createDecoderForURI(std::wstring const& pathOrURI) const {
    auto const candidates = getDecoderFactoriesForURI(pathOrURI);
    if (candidates.empty())
        throw StatusException(kolt::STATUS_EXTENSION_NOT_FOUND,
                              "No decoder for '" + kolt::StringUtils::toUTF8(pathOrURI) + "'");
    return makeDecoder(candidates.front());
}

kolt::EncoderInfo const* ExtensionManager::createEncoderInfo(std::wstring const& id) const {
    EncoderFactory* factory = getEncoderFactory(id);
    if (factory == nullptr)
        throw notFound(id, "encoder");
    return new EncoderInfoView(factory->getEncoderInfo());
}

std::shared_ptr<Encoder> ExtensionManager::createEncoder(std::wstring const& id,
                                                         kolt::AttributeMap const* options,
                                                         kolt::Callbacks* callbacks) const {
    EncoderFactory* factory = getEncoderFactory(id);
    if (factory == nullptr)
        throw notFound(id, "encoder");
    return std::shared_ptr<Encoder>(factory->create(options, callbacks));
}

} // namespace koltx
