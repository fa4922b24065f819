#pragma once

#include <string>
#include <string_view>

// The codec's document writer prints strings as they stand, so every string the tool hands the
// encoder passes through here first: the written document is then well-formed whatever the input
// held.
class XmlSafe {
public:
    // Text or attribute value: & < > " ' and tab, line feed and carriage return become character
    // references; characters that XML 1.0 does not allow become U+FFFD.
    static std::wstring text(std::wstring_view value);
    // An element name "prefix:local" whose prefix every written document declares (gml, core)
    // is kept when it is a valid name; anything else becomes a plain (generic attribute) name,
    // its colons replaced by "_" and escaped like text.
    static std::wstring attributeName(std::wstring_view name);
    // A mesh path step's tag made a valid element name: characters a name cannot hold become "_".
    static std::wstring name(std::wstring_view tag);
    // True if text() and name() would give the string back unchanged; they cost no allocation.
    static bool isText(std::wstring_view value);
    static bool isName(std::wstring_view tag);
};
