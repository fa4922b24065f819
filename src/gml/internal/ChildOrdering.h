#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace gml {

class CityElementNode;

using NodeList = std::vector<std::shared_ptr<CityElementNode>>;

// The LOD digit of a tag such as "bldg:lod2Solid", or 255 for any tag that carries none.
std::uint8_t lodOfTag(const std::wstring& tag);

// True for the four relief component tags that write their own "dem:lod".
bool isDemReliefTag(const std::wstring& tag);

// Orderings: whether a child tagged `a` goes before one tagged `b`.
bool lodThenBoundedByLast(const std::wstring& a, const std::wstring& b);
bool boundaryThenLod(const std::wstring& a, const std::wstring& b);
bool byRankTable(const wchar_t* const* table, std::size_t rows, const std::wstring& a,
                 const std::wstring& b);

// Sorts in place; for up to 32 children the result is exactly that of a stable sort.
void sortNodes(NodeList& nodes, bool (*before)(const std::wstring&, const std::wstring&));
void sortNodesByTable(NodeList& nodes, const wchar_t* const* table, std::size_t rows);

// The order of children that have no table of their own: by LOD for version 2, boundaries
// first for version 3 and later, untouched below version 2.
void sortByGeneralRule(NodeList& nodes, std::int32_t version);

} // namespace gml
