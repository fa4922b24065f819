#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace gml {

class CityElementNode;

using NodeList = std::vector<std::shared_ptr<CityElementNode>>;

// The LOD digit of a tag such as "bldg:lod2Solid", or 255 for any tag that carries none.
std::uint8_t lodOfTag(std::wstring const& tag);

// True for the four relief component tags that write their own "dem:lod".
bool isDemReliefTag(std::wstring const& tag);

// Orderings: whether a child tagged `a` goes before one tagged `b`.
bool lodThenBoundedByLast(std::wstring const& a, std::wstring const& b);
bool boundaryThenLod(std::wstring const& a, std::wstring const& b);
bool byRankTable(wchar_t const* const* table, std::size_t rows, std::wstring const& a,
                 std::wstring const& b);

// Sorts in place; for up to 32 children the result is exactly that of a stable sort.
void sortNodes(NodeList& nodes, bool (*before)(std::wstring const&, std::wstring const&));
void sortNodesByTable(NodeList& nodes, wchar_t const* const* table, std::size_t rows);

// The order of children that have no table of their own: by LOD for version 2, boundaries
// first for version 3 and later, untouched below version 2.
void sortByGeneralRule(NodeList& nodes, std::int32_t version);

} // namespace gml
