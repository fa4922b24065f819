#include "vocabulary/PathNormalizer.h"

#include "vocabulary/GmlGeometryTags.h"
#include "vocabulary/PathIterator.h"
#include "vocabulary/TagMaps.h"

#include <cwctype>
#include <deque>
#include <regex>
#include <string_view>
#include <unordered_map>

namespace {

// A feature and the property that holds it look alike in lower case; the maps know the
// feature. When an element is followed by its own lower-case spelling, it is the property.
struct PropertyPair {
    wchar_t const* feature;
    wchar_t const* next;
    wchar_t const* property;
};

PropertyPair const PropertyPairs[] = {
    {L"bldg:BuildingPart", L"bldg:buildingpart", L"bldg:buildingPart"},
    {L"bldg:BuildingRoom", L"bldg:buildingroom", L"bldg:buildingRoom"},
    {L"bldg:BuildingInstallation", L"bldg:buildinginstallation", L"bldg:buildingInstallation"},
    {L"brid:BridgeInstallation", L"brid:bridgeinstallation", L"brid:bridgeInstallation"},
    {L"trans:Section", L"trans:section", L"trans:section"},
    {L"trans:Intersection", L"trans:intersection", L"trans:intersection"},
    {L"trans:TrafficArea", L"trans:trafficarea", L"trans:trafficArea"},
};

bool hasRegexSyntax(std::wstring const& text) {
    return text.find_first_of(L".^$|?*+()[]{}\\/") != std::wstring::npos;
}

// Replaces every match of `pattern` (read as an ECMAScript expression) in `work`. Patterns
// without any special character match literally, which spares compiling a regex per tag.
void replaceAll(std::wstring& work, std::wstring const& pattern, std::wstring_view name) {
    if (hasRegexSyntax(pattern)) {
        work = std::regex_replace(work, std::wregex(pattern, std::regex::ECMAScript),
                                  std::wstring(name));
        return;
    }
    if (pattern.empty())
        return; // an empty pattern only matches empty text, and `name` is then empty too
    std::wstring out;
    std::size_t from = 0;
    for (std::size_t at = work.find(pattern); at != std::wstring::npos;
         at = work.find(pattern, from)) {
        out.append(work, from, at - from);
        out.append(name);
        from = at + pattern.size();
    }
    out.append(work, from, std::wstring::npos);
    work.swap(out);
}

// The LOD property's geometry name to its schema spelling: "bldg:lod2multisurface" gives
// "bldg:lod2MultiSurface". Tags without "lod" come back unchanged.
std::wstring canonicalLodTag(std::wstring_view tag, std::size_t pos) {
    std::wstring work(tag);
    std::wstring suffix;
    for (wchar_t c : tag.substr(pos + 3)) {
        if (!(c >= L'0' && c <= L'9'))
            suffix.push_back(c);
    }
    std::wstring const gmlTag = L"gml:" + suffix;
    std::wstring_view const canonical = canonicalGmlGeometryTag(gmlTag);
    std::size_t const colon = canonical.find(L':');
    std::wstring_view const name =
        colon == std::wstring_view::npos ? canonical : canonical.substr(colon + 1);
    if (name.empty() && suffix.empty())
        return work;
    replaceAll(work, suffix, name);
    return work;
}

// Both maps in one hash index for the look-up of every path component; a 3.0 row wins over a
// 2.0 row with the same key.
std::unordered_map<std::wstring_view, std::wstring const*> const& schemaSpellings() {
    static std::unordered_map<std::wstring_view, std::wstring const*> const index = [] {
        std::unordered_map<std::wstring_view, std::wstring const*> all;
        for (auto const* map : {&CityGML3Tags, &CityGML2Tags}) {
            for (auto const& [key, value] : *map)
                all.emplace(key, &value);
        }
        return all;
    }();
    return index;
}

// The schema spelling of one tag. The view points into the tables, into `tag` itself, or into
// `buffer` when the LOD rule rewrote the tag.
std::wstring_view spellTag(std::wstring_view tag, std::wstring& buffer) {
    std::size_t const lod = tag.find(L"lod");
    if (lod != std::wstring_view::npos) {
        buffer = canonicalLodTag(tag, lod);
        if (buffer != tag)
            return buffer;
    }
    auto const& index = schemaSpellings();
    auto const hit = index.find(tag);
    if (hit != index.end())
        return *hit->second;
    return canonicalGmlGeometryTag(tag);
}

// Answers per tag, remembered per thread: a document repeats a few dozen tags millions of times.
// The memory is bounded, since a hostile document may bring any number of distinct tags.
template <typename Value> class TagMemo {
public:
    // The value remembered for `tag`, or the one `make` gives, kept while there is room; the
    // reference holds until the next call.
    template <typename Make> Value const& get(std::wstring_view tag, Make make) {
        auto const hit = known.find(tag);
        if (hit != known.end())
            return *hit->second;
        if (known.size() >= 4096) {
            spare = make(tag);
            return spare;
        }
        auto& entry = kept.emplace_back(std::wstring(tag), make(tag));
        known.emplace(entry.first, &entry.second);
        return entry.second;
    }

private:
    std::deque<std::pair<std::wstring, Value>> kept;
    std::unordered_map<std::wstring_view, Value const*> known;
    Value spare{};
};

std::wstring_view lookUpTag(std::wstring_view tag) {
    thread_local TagMemo<std::wstring> spellings;
    return spellings.get(tag, [](std::wstring_view unknown) {
        std::wstring buffer;
        return std::wstring(spellTag(unknown, buffer));
    });
}

// 3 for a tag of the 3.0 vocabulary, 2 for one of 2.0 only, 0 for any other; case is ignored.
int versionOfTag(std::wstring_view tag) {
    std::wstring lower(tag);
    for (wchar_t& c : lower)
        c = static_cast<wchar_t>(std::towlower(static_cast<wint_t>(c)));
    if (CityGML3Tags.count(lower) != 0)
        return 3;
    return CityGML2Tags.count(lower) != 0 ? 2 : 0;
}

} // namespace

std::wstring normalizeNodePath(std::wstring const& path) {
    std::wstring result;
    result.reserve(path.size() + 16);
    for (PathIterator it(path); !it.atEnd(); ++it) {
        std::wstring_view tag = lookUpTag(it.tag);
        PathIterator next = it;
        ++next;
        for (PropertyPair const& pair : PropertyPairs) {
            if (tag == pair.feature && next.tag == pair.next) {
                tag = pair.property;
                break;
            }
        }
        result.append(tag);
        result.push_back(L'[');
        result.append(it.id);
        result.append(L"]\\");
    }
    return result;
}

bool detectCityGMLVersion(std::wstring_view path, int* version, int seed) {
    *version = seed;
    if (seed > 2)
        return true;
    thread_local TagMemo<int> versions;
    for (PathIterator it(path); !it.atEnd(); ++it) {
        int const found = versions.get(it.tag, versionOfTag);
        if (found == 3) {
            *version = 3;
            return true;
        }
        if (found == 2)
            *version = 2;
    }
    return *version > 0;
}
