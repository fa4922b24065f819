#include "gml/internal/ChildOrdering.h"

#include "gml/CityElementNode.h"

#include <algorithm>
#include <regex>

namespace gml {

namespace {

const std::wregex lodTagRegex(L"[a-zA-Z]+:lod([0-5])(geometry|Geometry|solid|Solid|multisurface|"
                              L"MultiSurface|multicurve|MultiCurve|point|Point)",
                              std::regex_constants::ECMAScript);

wchar_t const* const demReliefTags[] = {L"dem:TINRelief", L"dem:MassPointRelief",
                                        L"dem:BreaklineRelief", L"dem:grid"};

// Insertion sort keeps equal elements in place, which is why short lists use it.
constexpr std::size_t insertionSortLimit = 32;

template <typename Before> void sortWith(NodeList& nodes, Before before) {
    auto const compare = [&](std::shared_ptr<CityElementNode> const& a,
                             std::shared_ptr<CityElementNode> const& b) {
        return before(a->tag, b->tag);
    };
    if (nodes.size() > insertionSortLimit) {
        std::stable_sort(nodes.begin(), nodes.end(), compare);
        return;
    }
    for (std::size_t i = 1; i < nodes.size(); ++i) {
        std::size_t j = i;
        while (j > 0 && compare(nodes[i], nodes[j - 1]))
            --j;
        if (j != i)
            std::rotate(nodes.begin() + static_cast<std::ptrdiff_t>(j),
                        nodes.begin() + static_cast<std::ptrdiff_t>(i),
                        nodes.begin() + static_cast<std::ptrdiff_t>(i) + 1);
    }
}

} // namespace

std::uint8_t lodOfTag(std::wstring const& tag) {
    std::wsmatch match;
    if (!std::regex_match(tag, match, lodTagRegex))
        return 255;
    return static_cast<std::uint8_t>(match[1].str()[0] - L'0');
}

bool isDemReliefTag(std::wstring const& tag) {
    for (wchar_t const* relief : demReliefTags) {
        if (tag == relief)
            return true;
    }
    return false;
}

bool lodThenBoundedByLast(std::wstring const& a, std::wstring const& b) {
    const std::uint8_t lodA = lodOfTag(a);
    const std::uint8_t lodB = lodOfTag(b);
    if (lodA < lodB)
        return true;
    if (lodB < lodA)
        return false;
    if (a.find(L"boundedBy") != std::wstring::npos)
        return false;
    return b.find(L"boundedBy") != std::wstring::npos;
}

bool boundaryThenLod(std::wstring const& a, std::wstring const& b) {
    if (b == L"core:boundary")
        return false;
    if (a == L"core:boundary")
        return true;
    const std::uint8_t lodA = lodOfTag(a);
    const std::uint8_t lodB = lodOfTag(b);
    if (lodA < lodB)
        return true;
    if (lodB < lodA)
        return false;
    if (b == L"trans:section")
        return false;
    return a == L"trans:section";
}

bool byRankTable(wchar_t const* const* table, std::size_t rows, std::wstring const& a,
                 std::wstring const& b) {
    for (std::size_t row = 0; row < rows; ++row) {
        if (b == table[row])
            return false;
        if (a == table[row])
            return true;
    }
    return false;
}

void sortNodes(NodeList& nodes, bool (*before)(std::wstring const&, std::wstring const&)) {
    sortWith(nodes, before);
}

void sortNodesByTable(NodeList& nodes, wchar_t const* const* table, std::size_t rows) {
    sortWith(nodes, [table, rows](std::wstring const& a, std::wstring const& b) {
        return byRankTable(table, rows, a, b);
    });
}

void sortByGeneralRule(NodeList& nodes, std::int32_t version) {
    if (version == 2)
        sortNodes(nodes, lodThenBoundedByLast);
    else if (version >= 3)
        sortNodes(nodes, boundaryThenLod);
}

} // namespace gml
