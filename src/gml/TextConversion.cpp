#include "gml/TextConversion.h"

#include <kolt/StringUtils.h>

#include <vector>

namespace gml {

std::string toUtf8(std::wstring const& text) {
    // Tags and ids are nearly always ASCII, which needs no conversion call at all.
    bool ascii = true;
    for (wchar_t unit : text) {
        if (unit <= 0 || unit >= 0x80) {
            ascii = false;
            break;
        }
    }
    if (ascii)
        return std::string(text.begin(), text.end());

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

void appendUtf8(std::string& out, std::wstring_view text) {
    // The ASCII head is copied in one pass: tags and ids are nearly always all of the text.
    std::size_t ascii = 0;
    while (ascii < text.size() && text[ascii] > 0 && text[ascii] < 0x80)
        ++ascii;
    std::size_t const start = out.size();
    out.resize(start + ascii);
    char* target = out.data() + start;
    for (std::size_t i = 0; i < ascii; ++i)
        target[i] = static_cast<char>(text[i]);
    if (ascii == text.size() || text[ascii] == 0)
        return;
    // The rest starts after ASCII, so no surrogate pair is cut.
    out += toUtf8(std::wstring(text.substr(ascii)));
}

} // namespace gml
