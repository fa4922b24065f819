#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace gml {

// XML attributes of one start tag; the map order is the order in the document.
using AttributeTable = std::map<std::wstring, std::wstring>;

// The one object through which all XML of a document goes. It prints and never escapes, on
// purpose: the codec's output is defined byte for byte from the strings it is given, so callers
// (our tool, for one) are answerable for what their strings hold.
class XmlWriter {
public:
    XmlWriter(std::ostream& stream, std::int32_t version, std::int32_t coordinatePrecision);

    // One blank per level of depth.
    std::string indentation() const;

    void startElement(const std::wstring& tag, const std::wstring& id = std::wstring(),
                      const AttributeTable& attributes = AttributeTable());
    void endElement();
    void writeTextElement(const std::wstring& tag, const std::wstring& text);
    // Scalar form ("%f") of a number as the element text.
    void writeTextElement(const std::wstring& tag, double value);
    void writeColorElement(const std::wstring& tag, const std::vector<double>& color);
    // The first min(closingCount, size) values are written again at the end, closing a ring.
    void writeCoordinatesElement(const std::wstring& tag, const std::vector<double>& values,
                                 std::size_t closingCount,
                                 const AttributeTable& attributes = AttributeTable());

    void writeCoordinates(const std::vector<double>& values);
    void writeCoordinates(const double* values, std::size_t count);
    void writeCoordinates(const std::array<double, 3>& values);

    // Bytes that are already UTF-8, for the parts of a document that are not elements.
    void writeRaw(std::string_view bytes);

    std::ostream& stream;
    std::map<std::wstring, std::wstring> namespaces;
    std::vector<std::wstring> openTags;
    std::uint32_t depth = 0;
    std::int32_t version = 3;
    std::int32_t coordinatePrecision = 3;

private:
    void appendAttributes(std::string& line, const AttributeTable& attributes) const;
};

} // namespace gml
