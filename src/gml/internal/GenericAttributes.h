#pragma once

#include <string>

namespace gml {

class XmlWriter;

// Whole-string parses that say whether a text reads as a 32-bit integer or as a double; an
// out-of-range number is no number. `result` counts only on success.
bool tryParseInt(std::wstring const& text, int& result);
bool tryParseDouble(std::wstring const& text, double& result);

// One generic attribute in the form of the writer's version; `typeName` such as
// "intAttribute" (version 2) or "IntAttribute" (version 3).
void writeGenericAttribute(XmlWriter& writer, std::wstring const& typeName,
                           std::wstring const& name, std::wstring const& value);

} // namespace gml
