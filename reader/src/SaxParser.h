#pragma once

#include "SaxHandler.h"

#include <cstddef>
#include <istream>

namespace citygml {

// Streams a document through libxml2's SAX2 push parser in fixed-size chunks. No DTD or external
// resource is ever loaded, and documents that declare entities of their own are refused.
class SaxParser {
public:
    // Real documents nest a few dozen levels; deeper ones are refused with their line.
    static constexpr std::size_t MaxDepth = 1000;

    // Throws std::runtime_error with line, column and the parser's message on malformed XML.
    static void parse(std::istream& stream, SaxHandler& handler);
};

} // namespace citygml
