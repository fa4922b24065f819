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

// The 1-based line of the start tag being reported, worked out only when asked for: most
// elements never need it.
struct StartLine {
    int (*compute)(void* context);
    void* context;
    int operator()() const { return compute(context); }
};

// Receiver of the parser's events. Names are zero-terminated UTF-8 and, for one parse, the same
// name always arrives at the same address.
class SaxHandler {
public:
    virtual ~SaxHandler() = default;
    // `line` gives the start tag's line while this call lasts.
    virtual void startElement(char const* localName, char const* prefix, char const* uri,
                              XmlAttribute const* attributes, int count, StartLine line) = 0;
    virtual void endElement() = 0;
    virtual void characters(char const* text, std::size_t length) = 0;
};

} // namespace citygml
