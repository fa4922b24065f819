#pragma once

#include <cstddef>

namespace citygml {

// One attribute as the XML parser reports it; the value is not zero-terminated.
struct XmlAttribute {
    char const* localName;
    char const* prefix; // null when unprefixed
    char const* uri;    // null when in no namespace
    char const* valueBegin;
    char const* valueEnd;
};

// Receiver of the parser's events. Names are zero-terminated UTF-8 and, for one parse, the same
// name always arrives at the same address.
class SaxHandler {
public:
    virtual ~SaxHandler() = default;
    // `line` is the 1-based line of the start tag.
    virtual void startElement(char const* localName, char const* prefix, char const* uri,
                              XmlAttribute const* attributes, int count, int line) = 0;
    virtual void endElement() = 0;
    virtual void characters(char const* text, std::size_t length) = 0;
};

} // namespace citygml
