#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace koltx {
class ExtensionManager;
class Geometry;
} // namespace koltx

// What one decode of a file gave.
struct DecodedFile {
    std::shared_ptr<koltx::Geometry> geometry; // null when the file has no polygons
    std::wstring warnings;
    bool loaded = false; // false when the file could not be read or parsed
};

// Decodes a CityGML file through the codec's decoder, the way a host does: the file's key is
// its absolute path, textures are resolved beside it.
class FileDecoder {
public:
    static constexpr wchar_t const* DecoderID = L"com.morvane.kolt.codecs.CityGMLDecoder";
    // Files above this size show a progress bar when stderr is a terminal.
    static constexpr unsigned long long ProgressThreshold = 50ull << 20;

    explicit FileDecoder(koltx::ExtensionManager& manager);

    DecodedFile decode(std::string const& path, bool progressAllowed) const;

    // Runs over many files set this for the thread that decodes: it hears the bytes read
    // instead of a bar being drawn, and decoded contents are freed with their last owner
    // rather than kept to the end of the process. An empty function ends it.
    static void setBatchHook(std::function<void(uint64_t)> onBytes);

private:
    koltx::ExtensionManager& manager;
};
