#include "PngChunkFilter.h"

#include <cstdint>
#include <fstream>
#include <iterator>

std::string PngChunkFilter::withoutColourSpace(std::filesystem::path const& file) {
    std::ifstream in(file, std::ios::binary);
    return withoutColourSpace(
        std::string((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>()));
}

std::string PngChunkFilter::withoutColourSpace(std::string const& data) {
    std::string out = data.substr(0, 8);
    bool dropped = false;
    for (std::size_t i = 8; i + 12 <= data.size();) {
        auto const* p = reinterpret_cast<unsigned char const*>(data.data() + i);
        uint64_t const length = (uint64_t(p[0]) << 24) | (p[1] << 16) | (p[2] << 8) | p[3];
        if (i + 12 + length > data.size())
            return std::string();
        std::string const type = data.substr(i + 4, 4);
        if (type == "iCCP" || type == "cHRM" || type == "gAMA" || type == "sRGB" || type == "cICP")
            dropped = true;
        else
            out.append(data, i, 12 + length);
        i += 12 + length;
    }
    return dropped ? out : std::string();
}
