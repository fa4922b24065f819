#include "gml/internal/ChildOrdering.h"

#include "gml/CityElementNode.h"

#include <algorithm>
#include <numeric>

namespace gml {

namespace {

std::wstring_view const demReliefTags[] = {L"dem:TINRelief", L"dem:MassPointRelief",
                                           L"dem:BreaklineRelief", L"dem:grid"};

std::wstring_view const lodGeometryKinds[] = {
    L"geometry",     L"Geometry",   L"solid",      L"Solid", L"multisurface",
    L"MultiSurface", L"multicurve", L"MultiCurve", L"point", L"Point"};

bool isAsciiLetter(wchar_t c) {
    return (c >= L'a' && c <= L'z') || (c >= L'A' && c <= L'Z');
}

// Every ordering here is "by a number per tag", so each tag is looked at once and the nodes are
// sorted by their numbers; equal numbers keep their order.
template <typename KeyOf> void sortByKey(NodeList& nodes, KeyOf keyOf) {
    if (nodes.size() < 2)
        return;
    std::vector<std::uint32_t> keys;
    keys.reserve(nodes.size());
    for (auto const& node : nodes)
        keys.push_back(keyOf(node->tag));
    if (std::is_sorted(keys.begin(), keys.end()))
        return;
    std::vector<std::size_t> order(nodes.size());
    std::iota(order.begin(), order.end(), std::size_t(0));
    std::stable_sort(order.begin(), order.end(),
                     [&keys](std::size_t a, std::size_t b) { return keys[a] < keys[b]; });
    NodeList sorted;
    sorted.reserve(nodes.size());
    for (std::size_t const i : order)
        sorted.push_back(std::move(nodes[i]));
    nodes.swap(sorted);
}

bool contains(std::wstring const& tag, wchar_t const* part) {
    return tag.find(part) != std::wstring::npos;
}

} // namespace

std::uint8_t lodOfTag(std::wstring const& tag) {
    // "prefix:lodNkind", the prefix of letters only, N from 0 to 5.
    std::size_t const colon = tag.find(L':');
    if (colon == std::wstring::npos || colon == 0 ||
        !std::all_of(tag.begin(), tag.begin() + static_cast<std::ptrdiff_t>(colon), isAsciiLetter))
        return 255;
    std::wstring_view const rest = std::wstring_view(tag).substr(colon + 1);
    if (rest.size() < 5 || rest.substr(0, 3) != L"lod" || rest[3] < L'0' || rest[3] > L'5')
        return 255;
    std::wstring_view const kind = rest.substr(4);
    for (std::wstring_view const known : lodGeometryKinds)
        if (kind == known)
            return static_cast<std::uint8_t>(rest[3] - L'0');
    return 255;
}

bool isDemReliefTag(std::wstring const& tag) {
    for (std::wstring_view const relief : demReliefTags) {
        if (tag == relief)
            return true;
    }
    return false;
}

void sortNodesByTable(NodeList& nodes, wchar_t const* const* table, std::size_t rows) {
    // A tag's first row; tags of no row go last.
    sortByKey(nodes, [table, rows](std::wstring const& tag) {
        std::size_t row = 0;
        while (row < rows && tag != std::wstring_view(table[row]))
            ++row;
        return static_cast<std::uint32_t>(row);
    });
}

void sortByGeneralRule(NodeList& nodes, std::int32_t version) {
    if (version == 2) {
        // By LOD; boundedBy last among equal LODs.
        sortByKey(nodes, [](std::wstring const& tag) {
            return std::uint32_t(lodOfTag(tag)) * 2 + (contains(tag, L"boundedBy") ? 1 : 0);
        });
    } else if (version >= 3) {
        // core:boundary first, then by LOD, trans:section first among equal LODs.
        sortByKey(nodes, [](std::wstring const& tag) {
            std::uint32_t const boundary = tag == std::wstring_view(L"core:boundary") ? 0 : 1;
            std::uint32_t const section = tag == std::wstring_view(L"trans:section") ? 0 : 1;
            return boundary << 16 | std::uint32_t(lodOfTag(tag)) << 1 | section;
        });
    }
}

} // namespace gml
