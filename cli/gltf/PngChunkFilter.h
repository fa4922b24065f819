#pragma once

#include <filesystem>
#include <string>

// A PNG's bytes without the chunks that declare a colour space (iCCP, cHRM, gAMA, sRGB, cICP):
// glTF defines base colours as sRGB and viewers ignore them. Pixels stay byte for byte.
class PngChunkFilter {
public:
    // The filtered bytes; empty when nothing had to go or the file is damaged (left as it is).
    static std::string withoutColourSpace(std::filesystem::path const& file);
    // The same for bytes in memory.
    static std::string withoutColourSpace(std::string const& data);
};
