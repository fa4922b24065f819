#pragma once

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

private:
    koltx::ExtensionManager& manager;
};
