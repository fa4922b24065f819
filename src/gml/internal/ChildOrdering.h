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

// Sorts by the row of each child's tag in `table`, children of no row last; equal rows keep
// their order.
void sortNodesByTable(NodeList& nodes, wchar_t const* const* table, std::size_t rows);

// The order of children that have no table of their own: by LOD for version 2, boundaries
// first for version 3 and later, untouched below version 2.
void sortByGeneralRule(NodeList& nodes, std::int32_t version);

} // namespace gml
