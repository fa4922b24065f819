#pragma once

#include "SaxHandler.h"

#include <istream>

namespace citygml {

// Streams a document through libxml2's SAX2 push parser in fixed-size chunks. Entities are never
// substituted and no DTD or external resource is ever loaded.
class SaxParser {
public:
    // Throws std::runtime_error with line, column and the parser's message on malformed XML.
    static void parse(std::istream& stream, SaxHandler& handler);
};

} // namespace citygml
