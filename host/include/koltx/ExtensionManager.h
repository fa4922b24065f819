#pragma once

#include "kolt/AttributeMap.h"
#include "koltx/DecoderFactory.h"
#include "koltx/EncoderFactory.h"
#include "koltx/ExtensionFactory.h"
#include "koltx/GeometryDecoder.h"

#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace kolt {
class Callbacks;
class EncoderInfo;
} // namespace kolt

namespace koltx {

// Knows every extension factory of the process. Factories are not owned: they live as long as
// the library that made them, and libraries loaded here are never unloaded.
//
// An extension library exports, as plain C functions, getVersionMajor() and getVersionMinor()
// (int32_t), registerExtensionFactories(koltx::ExtensionManager*) and
// unregisterExtensionFactories(). Major version 3 is accepted.
class ExtensionManager {
public:
    static constexpr int32_t SUPPORTED_VERSION_MAJOR = 3;

    // The process-wide manager, with the host's built-in encoders registered.
    static ExtensionManager* instance();

    // An empty manager, without the built-in encoders.
    ExtensionManager();
    ExtensionManager(ExtensionManager const&) = delete;
    ExtensionManager& operator=(ExtensionManager const&) = delete;
    virtual ~ExtensionManager();

    // Adds a factory; a null or already known one is ignored.
    virtual void registerFactory(ExtensionFactory* factory);

    // Loads the extension library at `path` (UTF-8) and lets it register its factories. Throws
    // koltx::StatusException(STATUS_EXTENSION_LOAD_FAILED) with a message naming the file when
    // it cannot be opened, lacks an export or has an unsupported version; nothing is registered
    // then. A registration that throws gives the same error. Loading the same file again, also
    // from another thread at the same time, does nothing.
    void loadExtensionLibrary(std::string const& path);
    // Loads every "*.so" file of `directory` that exports registerExtensionFactories; returns
    // the number loaded. Libraries that fail get one line each in `warnings` (may be null).
    size_t loadExtensionDirectory(std::string const& directory, std::wstring* warnings);

    std::vector<ExtensionFactory*> getFactories() const;
    // Null when no factory has the ID. Several with one ID: the highest merit, then the first.
    ExtensionFactory* getFactory(std::wstring const& id) const;
    DecoderFactory* getDecoderFactory(std::wstring const& id) const;
    EncoderFactory* getEncoderFactory(std::wstring const& id) const;
    // Decoder factories that can handle the file, by merit, highest first (ties: registration).
    std::vector<DecoderFactory*> getDecoderFactoriesForURI(std::wstring const& pathOrURI) const;

    // Throw koltx::StatusException(STATUS_EXTENSION_NOT_FOUND) for an unknown ID.
    std::shared_ptr<GeometryDecoder> createDecoder(std::wstring const& id) const;
    // The best decoder for the file; throws as above when none handles it.
    std::shared_ptr<GeometryDecoder> createDecoderForURI(std::wstring const& pathOrURI) const;
    // A new copy of the encoder's information, owned by the caller (release with destroy()).
    kolt::EncoderInfo const* createEncoderInfo(std::wstring const& id) const;
    std::shared_ptr<Encoder> createEncoder(std::wstring const& id,
                                           kolt::AttributeMap const* options,
                                           kolt::Callbacks* callbacks) const;

private:
    struct Library {
        std::string path;
        void* handle;
    };

    // The best factory of that kind with the ID, or null.
    template <typename Kind> Kind* findBest(std::wstring const& id) const;

    mutable std::mutex mutex;
    // Held for a whole load; recursive, so that a registration may load a library in turn.
    std::recursive_mutex loadMutex;
    std::vector<ExtensionFactory*> factories;
    std::vector<Library> libraries;
};

} // namespace koltx
