#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

class ReaderDiagnostics;
namespace koltx {
class ExtensionManager;
class Geometry;
} // namespace koltx

// What one decode of a file gave.
struct DecodedFile {
    std::shared_ptr<koltx::Geometry> geometry; // null when the file has no polygons
    std::wstring warnings;
    bool loaded = false; // false when the file could not be read or parsed
    std::string error;   // why not, naming the file (and the first line of `warnings` then)
    // The root element as "{namespace}name", and whether that is a CityGML namespace.
    std::string root;
    bool cityGML = false;
    std::shared_ptr<ReaderDiagnostics> reader; // what the reader dropped or noticed
};

// Decodes a CityGML file through the codec's decoder, the way a host does: the file's key is
// its absolute path, textures are resolved beside it.
class FileDecoder {
public:
    static constexpr wchar_t const* DecoderID = L"com.morvane.kolt.codecs.CityGMLDecoder";
    // Files above this size show a progress bar when stderr is a terminal.
    static constexpr unsigned long long ProgressThreshold = 50ull << 20;

    explicit FileDecoder(koltx::ExtensionManager& manager);

    // Unless `keepToExit` is false or the thread runs over many files, the decoded contents are
    // kept to the end of the process, which frees them faster than their owners would. A caller
    // that takes the meshes over (and frees them as it goes) passes false.
    DecodedFile decode(std::string const& path, bool progressAllowed, bool keepToExit = true) const;

    // Why `file` gives nothing to convert ("... is not a CityGML document: ...", "... holds no
    // polygon"), or "" when it holds polygons.
    static std::string nothingToConvert(DecodedFile const& file, std::string const& path);

    // "{namespace}name" of the file's root element, or "" when it has none that can be read.
    static std::string rootElement(std::string const& path);
    // Runs over many files set this for the thread that decodes: it hears the bytes read
    // instead of a bar being drawn, and decoded contents are freed with their last owner
    // rather than kept to the end of the process. An empty function ends it.
    static void setBatchHook(std::function<void(uint64_t)> onBytes);
    // Whether this thread runs over many files: what a single conversion may leave to the end of
    // the process must then be freed as it goes.
    static bool inBatch();

private:
    koltx::ExtensionManager& manager;
};
