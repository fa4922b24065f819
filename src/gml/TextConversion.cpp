#include "gml/TextConversion.h"

#include <kolt/StringUtils.h>

#include <cstdint>
#include <vector>

namespace gml {

namespace {

// Text through the host's converter, which ends it at its terminator or at a NUL inside it.
std::string convertedUtf8(std::wstring const& text) {
    std::vector<char> buffer(text.size(), '\0');
    std::size_t size = buffer.size();
    kolt::StringUtils::toUTF8FromUTF16(text.c_str(), buffer.empty() ? nullptr : buffer.data(),
                                       &size, nullptr);
    if (size > buffer.size()) {
        buffer.assign(size, '\0');
        kolt::StringUtils::toUTF8FromUTF16(text.c_str(), buffer.data(), &size, nullptr);
    }
    // The text ends at its terminator, or at a NUL inside it.
    std::size_t length = 0;
    while (length < buffer.size() && buffer[length] != '\0')
        ++length;
    return std::string(buffer.data(), length);
}

} // namespace

std::string toUtf8(std::wstring const& text) {
    std::string out;
    appendUtf8(out, text);
    return out;
}

void appendUtf8(std::string& out, std::wstring_view text) {
    // The ASCII head is narrowed in blocks that the compiler turns into vector code: tags and
    // ids are nearly always all of the text. A unit outside 1..127 ends the head.
    constexpr std::size_t block = 16;
    std::size_t const start = out.size();
    out.resize(start + text.size());
    char* target = out.data() + start;
    std::size_t ascii = 0;
    for (; ascii + block <= text.size(); ascii += block) {
        std::uint32_t outside = 0;
        for (std::size_t k = 0; k < block; ++k)
            outside |= static_cast<std::uint32_t>(text[ascii + k]) - 1u >= 0x7Fu;
        if (outside != 0)
            break;
        for (std::size_t k = 0; k < block; ++k)
            target[ascii + k] = static_cast<char>(text[ascii + k]);
    }
    for (; ascii < text.size() && static_cast<std::uint32_t>(text[ascii]) - 1u < 0x7Fu; ++ascii)
        target[ascii] = static_cast<char>(text[ascii]);
    out.resize(start + ascii);
    if (ascii == text.size() || text[ascii] == 0)
        return;
    // The rest starts after ASCII, so no surrogate pair is cut.
    out += convertedUtf8(std::wstring(text.substr(ascii)));
}

} // namespace gml
