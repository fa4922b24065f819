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

void XmlWriter::appendAttributes(std::string& line, const AttributeTable& attributes) const {
    for (const auto& [name, value] : attributes) {
        line += ' ';
        line += toUtf8(name);
        line += "=\"";
        line += toUtf8(value);
        line += '"';
    }
}

void XmlWriter::startElement(const std::wstring& tag, const std::wstring& id,
                             const AttributeTable& attributes) {
    ++depth;
    std::string line = indentation();
    line += '<';
    line += toUtf8(tag);
    if (!id.empty()) {
        line += " gml:id=\"";
        line += toUtf8(id);
        line += '"';
    }
    appendAttributes(line, attributes);
    line += ">\n";
    stream.write(line.data(), static_cast<std::streamsize>(line.size()));
    openTags.push_back(tag);
}

void XmlWriter::endElement() {
    // Callers balance their calls; an unbalanced one must not read past the stack.
    if (openTags.empty())
        throw std::logic_error("XML end tag without an open element.");
    std::string line = indentation();
    line += "</";
    line += toUtf8(openTags.back());
    line += ">\n";
    stream.write(line.data(), static_cast<std::streamsize>(line.size()));
    openTags.pop_back();
    --depth;
}

void XmlWriter::writeTextElement(const std::wstring& tag, const std::wstring& text) {
    const std::string name = toUtf8(tag);
    std::string line = indentation();
    line += '<';
    line += name;
    line += '>';
    line += toUtf8(text);
    line += "</";
    line += name;
    line += ">\n";
    stream.write(line.data(), static_cast<std::streamsize>(line.size()));
}

void XmlWriter::writeTextElement(const std::wstring& tag, double value) {
    const std::string text = scalarForm(value);
    writeTextElement(tag, std::wstring(text.begin(), text.end()));
}

void XmlWriter::writeColorElement(const std::wstring& tag, const std::vector<double>& color) {
    if (color.size() < 3)
        throw std::invalid_argument("A colour needs three components.");
    const std::string name = toUtf8(tag);
    std::string line = indentation();
    line += '<';
    line += name;
    line += '>';
    line += streamForm(color[0]);
    line += ' ';
    line += streamForm(color[1]);
    line += ' ';
    line += streamForm(color[2]);
    line += "</";
    line += name;
    line += ">\n";
    stream.write(line.data(), static_cast<std::streamsize>(line.size()));
}

void XmlWriter::writeCoordinatesElement(const std::wstring& tag, const std::vector<double>& values,
                                        std::size_t closingCount,
                                        const AttributeTable& attributes) {
    const std::string name = toUtf8(tag);
    std::string head = indentation();
    head += '<';
    head += name;
    appendAttributes(head, attributes);
    head += ">\n";
    head += indentation();
    stream.write(head.data(), static_cast<std::streamsize>(head.size()));
    writeCoordinates(values);
    writeCoordinates(values.data(), std::min(closingCount, values.size()));
    std::string tail = "</";
    tail += name;
    tail += ">\n";
    stream.write(tail.data(), static_cast<std::streamsize>(tail.size()));
}

void XmlWriter::writeCoordinates(const std::vector<double>& values) {
    writeCoordinates(values.data(), values.size());
}

void XmlWriter::writeCoordinates(const std::array<double, 3>& values) {
    writeCoordinates(values.data(), values.size());
}

void XmlWriter::writeCoordinates(const double* values, std::size_t count) {
    // Numbers are gathered in a stack block and handed to the stream in few large writes:
    // this is the hot path of the encoder.
    constexpr std::size_t blockSize = 8192;
    char block[blockSize];
    std::size_t used = 0;
    const auto flush = [&] {
        stream.write(block, static_cast<std::streamsize>(used));
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
    stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

} // namespace gml
