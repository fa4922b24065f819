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

    void startElement(std::wstring_view tag, std::wstring_view id = std::wstring_view(),
                      AttributeTable const& attributes = emptyAttributes());
    // The same with one attribute, which needs no table.
    void startElement(std::wstring_view tag, std::wstring_view id, std::wstring_view attributeName,
                      std::wstring_view attributeValue);
    void endElement();
    void writeTextElement(std::wstring_view tag, std::wstring_view text);
    // Scalar form ("%f") of a number as the element text.
    void writeTextElement(std::wstring_view tag, double value);
    void writeColorElement(std::wstring_view tag, std::vector<double> const& color);
    // The first min(closingCount, size) values are written again at the end, closing a ring.
    void writeCoordinatesElement(std::wstring_view tag, std::vector<double> const& values,
                                 std::size_t closingCount,
                                 AttributeTable const& attributes = emptyAttributes());

    // The same for `count` values at `values`, with at most one attribute (none if its name is
    // empty).
    void writeCoordinatesElement(std::wstring_view tag, double const* values, std::size_t count,
                                 std::size_t closingCount, std::wstring_view attributeName,
                                 std::wstring_view attributeValue);

    void writeCoordinates(std::vector<double> const& values);
    void writeCoordinates(double const* values, std::size_t count);
    void writeCoordinates(std::array<double, 3> const& values);

    // Bytes that are already UTF-8, for the parts of a document that are not elements.
    void writeRaw(std::string_view bytes);

    std::ostream& stream;
    std::map<std::wstring, std::wstring> namespaces;
    // Where each open element's UTF-8 name starts in `openNames`, innermost last.
    std::vector<std::size_t> openTags;
    std::uint32_t depth = 0;
    std::int32_t version = 3;
    std::int32_t coordinatePrecision = 3;

    static AttributeTable const& emptyAttributes();

private:
    void appendAttributes(std::string& out, AttributeTable const& attributes) const;
    void appendAttribute(std::string& out, std::wstring_view name, std::wstring_view value) const;
    // `<tag gml:id="id"` at the new depth, the name kept as open.
    void openStartTag(std::wstring_view tag, std::wstring_view id);
    // Everything of a coordinate element behind its start tag's attributes.
    void finishCoordinatesElement(std::size_t nameStart, std::size_t nameEnd, double const* values,
                                  std::size_t count, std::size_t closingCount);
    // Starts `line` with the indentation of the current depth.
    void beginLine();
    void flushLine();
    void put(char const* bytes, std::size_t size);

    // Appends the name of the innermost open element to `line`.
    void appendOpenName();

    // The names of the open elements back to back: one buffer, so that opening an element
    // allocates nothing in the steady state.
    std::string openNames;
    // Reused for every line, so that writing allocates nothing in the steady state.
    std::string line;
};

} // namespace gml
