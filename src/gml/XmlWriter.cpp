#include "gml/XmlWriter.h"

#include "gml/NumberFormat.h"
#include "gml/TextConversion.h"

#include <algorithm>
#include <stdexcept>

namespace gml {

XmlWriter::XmlWriter(std::ostream& stream, std::int32_t version, std::int32_t coordinatePrecision)
    : stream(stream), version(version), coordinatePrecision(coordinatePrecision) {}

std::string XmlWriter::indentation() const {
    return std::string(depth, ' ');
}

AttributeTable const& XmlWriter::emptyAttributes() {
    static const AttributeTable empty;
    return empty;
}

void XmlWriter::beginLine() {
    line.assign(depth, ' ');
}

void XmlWriter::flushLine() {
    put(line.data(), line.size());
}

void XmlWriter::put(char const* bytes, std::size_t size) {
    // The stream's buffer takes the bytes directly: a sentry for each line costs as much as the
    // line. Failures end as std::ostream::write would end them.
    if (!stream.good() || stream.exceptions() != std::ios_base::goodbit) {
        stream.write(bytes, static_cast<std::streamsize>(size));
        return;
    }
    try {
        if (stream.rdbuf()->sputn(bytes, static_cast<std::streamsize>(size)) !=
            static_cast<std::streamsize>(size))
            stream.setstate(std::ios_base::badbit);
    } catch (...) {
        stream.setstate(std::ios_base::badbit);
    }
}

void XmlWriter::appendOpenName() {
    line.append(openNames, openTags.back(), std::string::npos);
}

void XmlWriter::appendAttribute(std::string& out, std::wstring_view name,
                                std::wstring_view value) const {
    out += ' ';
    appendUtf8(out, name);
    out += "=\"";
    appendUtf8(out, value);
    out += '"';
}

void XmlWriter::appendAttributes(std::string& out, AttributeTable const& attributes) const {
    for (auto const& [name, value] : attributes)
        appendAttribute(out, name, value);
}

void XmlWriter::openStartTag(std::wstring_view tag, std::wstring_view id) {
    ++depth;
    beginLine();
    line += '<';
    const std::size_t nameStart = line.size();
    appendUtf8(line, tag);
    openTags.push_back(openNames.size());
    openNames.append(line, nameStart, std::string::npos);
    if (!id.empty()) {
        line += " gml:id=\"";
        appendUtf8(line, id);
        line += '"';
    }
}

void XmlWriter::startElement(std::wstring_view tag, std::wstring_view id,
                             AttributeTable const& attributes) {
    openStartTag(tag, id);
    appendAttributes(line, attributes);
    line += ">\n";
    flushLine();
}

void XmlWriter::startElement(std::wstring_view tag, std::wstring_view id,
                             std::wstring_view attributeName, std::wstring_view attributeValue) {
    openStartTag(tag, id);
    appendAttribute(line, attributeName, attributeValue);
    line += ">\n";
    flushLine();
}

void XmlWriter::endElement() {
    // Callers balance their calls; an unbalanced one must not read past the stack.
    if (openTags.empty())
        throw std::logic_error("XML end tag without an open element.");
    beginLine();
    line += "</";
    appendOpenName();
    line += ">\n";
    flushLine();
    openNames.resize(openTags.back());
    openTags.pop_back();
    --depth;
}

void XmlWriter::writeTextElement(std::wstring_view tag, std::wstring_view text) {
    beginLine();
    line += '<';
    const std::size_t nameStart = line.size();
    appendUtf8(line, tag);
    const std::size_t nameEnd = line.size();
    line += '>';
    appendUtf8(line, text);
    line += "</";
    line.append(line, nameStart, nameEnd - nameStart);
    line += ">\n";
    flushLine();
}

void XmlWriter::writeTextElement(std::wstring_view tag, double value) {
    const std::string text = scalarForm(value);
    writeTextElement(tag, std::wstring(text.begin(), text.end()));
}

void XmlWriter::writeColorElement(std::wstring_view tag, std::vector<double> const& color) {
    if (color.size() < 3)
        throw std::invalid_argument("A colour needs three components.");
    beginLine();
    line += '<';
    const std::size_t nameStart = line.size();
    appendUtf8(line, tag);
    const std::size_t nameEnd = line.size();
    line += '>';
    line += streamForm(color[0]);
    line += ' ';
    line += streamForm(color[1]);
    line += ' ';
    line += streamForm(color[2]);
    line += "</";
    line.append(line, nameStart, nameEnd - nameStart);
    line += ">\n";
    flushLine();
}

void XmlWriter::writeCoordinatesElement(std::wstring_view tag, std::vector<double> const& values,
                                        std::size_t closingCount,
                                        AttributeTable const& attributes) {
    beginLine();
    line += '<';
    const std::size_t nameStart = line.size();
    appendUtf8(line, tag);
    const std::size_t nameEnd = line.size();
    appendAttributes(line, attributes);
    finishCoordinatesElement(nameStart, nameEnd, values.data(), values.size(), closingCount);
}

void XmlWriter::writeCoordinatesElement(std::wstring_view tag, double const* values,
                                        std::size_t count, std::size_t closingCount,
                                        std::wstring_view attributeName,
                                        std::wstring_view attributeValue) {
    beginLine();
    line += '<';
    const std::size_t nameStart = line.size();
    appendUtf8(line, tag);
    const std::size_t nameEnd = line.size();
    if (!attributeName.empty())
        appendAttribute(line, attributeName, attributeValue);
    finishCoordinatesElement(nameStart, nameEnd, values, count, closingCount);
}

void XmlWriter::finishCoordinatesElement(std::size_t nameStart, std::size_t nameEnd,
                                         double const* values, std::size_t count,
                                         std::size_t closingCount) {
    line += ">\n";
    line.append(depth, ' ');
    flushLine();
    writeCoordinates(values, count);
    writeCoordinates(values, std::min(closingCount, count));
    // The head is not needed any more: the tail reuses its name.
    line.erase(0, nameStart);
    line.resize(nameEnd - nameStart);
    line.insert(0, "</");
    line += ">\n";
    flushLine();
}

void XmlWriter::writeCoordinates(std::vector<double> const& values) {
    writeCoordinates(values.data(), values.size());
}

void XmlWriter::writeCoordinates(std::array<double, 3> const& values) {
    writeCoordinates(values.data(), values.size());
}

void XmlWriter::writeCoordinates(double const* values, std::size_t count) {
    // Numbers are gathered in a stack block and handed to the stream in few large writes:
    // this is the hot path of the encoder.
    constexpr std::size_t blockSize = 8192;
    char block[blockSize];
    std::size_t used = 0;
    auto const flush = [&] {
        put(block, used);
        used = 0;
    };
    for (std::size_t i = 0; i < count; ++i) {
        if (blockSize - used < coordinateBufferSize + 1)
            flush();
        try {
            used += formatCoordinate(block + used, values[i], coordinatePrecision);
        } catch (...) {
            // What came before the failing value stays written.
            flush();
            throw;
        }
        block[used++] = ' ';
    }
    if (used > 0)
        flush();
}

void XmlWriter::writeRaw(std::string_view bytes) {
    put(bytes.data(), bytes.size());
}

} // namespace gml
