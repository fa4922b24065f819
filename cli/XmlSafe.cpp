#include "XmlSafe.h"

namespace {

bool allowedInXml(wchar_t c) {
    auto const u = static_cast<std::uint32_t>(c);
    return u == 0x9 || u == 0xA || u == 0xD || (u >= 0x20 && u <= 0xD7FF) ||
           (u >= 0xE000 && u <= 0xFFFD) || (u >= 0x10000 && u <= 0x10FFFF);
}

bool nameStart(wchar_t c) {
    auto const u = static_cast<std::uint32_t>(c);
    return (c >= L'a' && c <= L'z') || (c >= L'A' && c <= L'Z') || c == L'_' ||
           (u >= 0xC0 && u <= 0xD7FF && u != 0xD7 && u != 0xF7) || (u >= 0xF900 && u <= 0xFFFD) ||
           (u >= 0x10000 && u <= 0xEFFFF);
}

bool nameChar(wchar_t c) {
    return nameStart(c) || (c >= L'0' && c <= L'9') || c == L'-' || c == L'.' || c == 0xB7;
}

std::wstring ncName(std::wstring_view text) {
    std::wstring out;
    for (wchar_t c : text)
        out += nameChar(c) ? c : L'_';
    if (out.empty() || !nameStart(out[0]))
        out.insert(out.begin(), L'_');
    return out;
}

bool isNcName(std::wstring_view text) {
    if (text.empty() || !nameStart(text[0]))
        return false;
    for (wchar_t c : text)
        if (!nameChar(c))
            return false;
    return true;
}

} // namespace

bool XmlSafe::isText(std::wstring_view value) {
    // Ids and names are plain ASCII nearly always: whole blocks of it are passed with one check
    // that the compiler vectorises.
    auto plain = [](wchar_t c) {
        return c >= 0x20 && c < 0x7F && c != L'&' && c != L'<' && c != L'>' && c != L'"' &&
               c != L'\'';
    };
    constexpr std::size_t block = 16;
    while (value.size() >= block) {
        bool all = true;
        for (std::size_t i = 0; i < block; ++i)
            all &= plain(value[i]);
        if (!all)
            break;
        value.remove_prefix(block);
    }
    for (wchar_t c : value)
        if (c == L'&' || c == L'<' || c == L'>' || c == L'"' || c == L'\'' || c == L'\t' ||
            c == L'\n' || c == L'\r' || !allowedInXml(c))
            return false;
    return true;
}

bool XmlSafe::isName(std::wstring_view tag) {
    auto const colon = tag.find(L':');
    if (colon == std::wstring_view::npos)
        return isNcName(tag);
    return isNcName(tag.substr(0, colon)) && isNcName(tag.substr(colon + 1));
}

std::wstring XmlSafe::text(std::wstring_view value) {
    std::wstring out;
    out.reserve(value.size());
    for (wchar_t c : value) {
        switch (c) {
        case L'&':
            out += L"&amp;";
            break;
        case L'<':
            out += L"&lt;";
            break;
        case L'>':
            out += L"&gt;";
            break;
        case L'"':
            out += L"&quot;";
            break;
        case L'\'':
            out += L"&apos;";
            break;
        case L'\t':
            out += L"&#9;";
            break;
        case L'\n':
            out += L"&#10;";
            break;
        case L'\r':
            out += L"&#13;";
            break;
        default:
            out += allowedInXml(c) ? c : L'\xFFFD';
        }
    }
    return out;
}

std::wstring XmlSafe::attributeName(std::wstring_view name) {
    auto const colon = name.find(L':');
    if (colon != std::wstring_view::npos) {
        std::wstring_view const prefix = name.substr(0, colon);
        std::wstring_view const local = name.substr(colon + 1);
        if ((prefix == L"gml" || prefix == L"core") && !local.empty() && ncName(local) == local)
            return std::wstring(name);
    }
    // A plain name stands in an attribute value of the document; it may hold no colon, which
    // would make it an element of its own.
    std::wstring plain(name);
    for (wchar_t& c : plain)
        if (c == L':')
            c = L'_';
    return text(plain);
}

std::wstring XmlSafe::name(std::wstring_view tag) {
    auto const colon = tag.find(L':');
    if (colon == std::wstring_view::npos)
        return ncName(tag);
    return ncName(tag.substr(0, colon)) + L":" + ncName(tag.substr(colon + 1));
}
