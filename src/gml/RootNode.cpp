#include "gml/RootNode.h"

#include "gml/DocumentWriter.h"
#include "gml/NumberFormat.h"
#include "gml/XmlWriter.h"
#include "gml/internal/GenericAttributes.h"

namespace gml {

namespace {

std::wstring widen(std::string const& ascii) {
    return std::wstring(ascii.begin(), ascii.end());
}

} // namespace

RootNode::RootNode(AttributeMap const& attributes, std::shared_ptr<Envelope> envelope,
                   std::wstring_view id, bool writeId, std::wstring_view tag)
    : CityElementNode(id, writeId, tag), attributes(attributes), envelope(std::move(envelope)) {}

void RootNode::writeContent(XmlWriter& writer) {
    if (envelope)
        writeEnvelope(writer, *envelope);
    bool const modern = writer.version >= 3;
    for (auto const& [name, value] : attributes) {
        // A qualified name is a property element of its own, written as it stands.
        if (name.find(L':') != std::wstring::npos) {
            writer.writeTextElement(name, value);
            continue;
        }
        int integer = 0;
        double number = 0.0;
        if (tryParseInt(value, integer))
            writeGenericAttribute(writer, modern ? L"IntAttribute" : L"intAttribute", name,
                                  widen(integerForm(integer)));
        else if (tryParseDouble(value, number))
            writeGenericAttribute(writer, modern ? L"DoubleAttribute" : L"doubleAttribute", name,
                                  widen(scalarForm(number)));
        else
            writeGenericAttribute(writer, modern ? L"StringAttribute" : L"stringAttribute", name,
                                  value);
    }
    sortChildren(writer);
    for (auto const& child : children)
        child->write(writer);
}

} // namespace gml
