#include "MeshPath.h"

#include <kolt/StringUtils.h>

#include <cctype>

namespace {

struct Element {
    std::string_view text; // `tag[id]` or `tag`
    std::string_view tag;
    std::string_view id;
};

Element split(std::string_view text) {
    Element e{text, text, {}};
    std::size_t const open = text.find('[');
    if (open != std::string_view::npos) {
        e.tag = text.substr(0, open);
        std::size_t const close = text.find(']', open);
        e.id = text.substr(open + 1,
                           (close == std::string_view::npos ? text.size() : close) - open - 1);
    }
    return e;
}

std::string_view localName(std::string_view tag) {
    std::size_t const colon = tag.find(':');
    return colon == std::string_view::npos ? tag : tag.substr(colon + 1);
}

// `lod2MultiSurface`, `lod0FootPrint`, `lod3solid`: the digit after "lod", else -1.
int levelOf(std::string_view tag) {
    std::string_view const name = localName(tag);
    if (name.size() < 4 || std::tolower(static_cast<unsigned char>(name[0])) != 'l' ||
        std::tolower(static_cast<unsigned char>(name[1])) != 'o' ||
        std::tolower(static_cast<unsigned char>(name[2])) != 'd' ||
        !std::isdigit(static_cast<unsigned char>(name[3])))
        return -1;
    return name[3] - '0';
}

bool isGml(std::string_view tag) {
    return tag.rfind("gml:", 0) == 0;
}

// Feature types are written with a capital (Building, WallSurface); properties are not.
bool isFeature(std::string_view tag) {
    std::string_view const name = localName(tag);
    return !isGml(tag) && !name.empty() && std::isupper(static_cast<unsigned char>(name[0]));
}

} // namespace

MeshPath MeshPath::parse(std::string_view path) {
    MeshPath out;
    parse(path, out);
    return out;
}

void MeshPath::parse(std::string_view path, MeshPath& out) {
    out.lod = -1;
    bool inGeometry = false;
    Element top, feature;
    std::size_t featureEnd = 0;
    std::size_t start = 0;
    while (start < path.size()) {
        std::size_t end = path.find('\\', start);
        if (end == std::string_view::npos)
            end = path.size();
        Element const e = split(path.substr(start, end - start));
        if (start == 0) {
            top = feature = e;
            featureEnd = end;
        }
        int const level = levelOf(e.tag);
        if (level >= 0 && out.lod < 0)
            out.lod = level;
        if (level >= 0 || isGml(e.tag))
            inGeometry = true;
        if (!inGeometry && start > 0 && isFeature(e.tag)) {
            feature = e;
            featureEnd = end;
        }
        start = end + 1;
    }
    // Each string is made once, at the end.
    out.topKey.assign(top.text);
    out.topId.assign(top.id);
    out.featureTag.assign(feature.tag);
    out.featureId.assign(feature.id);
    out.featureKey.assign(path.substr(0, featureEnd));
}

MeshPath MeshPath::parse(std::wstring const& name) {
    // Mesh paths are nearly always ASCII: narrowed directly into a buffer kept for the next
    // path, the general conversion otherwise.
    thread_local std::string narrow;
    narrow.resize(name.size());
    unsigned wide = 0; // any bit above ASCII, checked once after a loop without branches
    wchar_t const* from = name.data();
    char* to = narrow.data(); // a local pointer: stores of char may alias the string itself
    for (std::size_t i = 0, n = name.size(); i < n; ++i) {
        wide |= static_cast<unsigned>(from[i]);
        to[i] = static_cast<char>(from[i]);
    }
    if (wide >= 0x80)
        return parse(std::string_view(kolt::StringUtils::toUTF8(name)));
    return parse(std::string_view(narrow));
}
