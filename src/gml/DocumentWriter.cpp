#include "gml/DocumentWriter.h"

#include "gml/AppearanceMemberNode.h"
#include "gml/CityElementNode.h"
#include "gml/Envelope.h"
#include "gml/TextConversion.h"
#include "gml/XmlWriter.h"

#include <utility>

namespace gml {

namespace {

// Bases of the published namespace names and schema locations.
#define KOLT_NS L"http://www.opengis.net"
#define KOLT_XS L"http://schemas.opengis.net"
#define KOLT_XSS L"https://schemas.opengis.net"
#define KOLT_W3 L"http://www.w3.org"

using SchemaMap = std::map<std::wstring, std::pair<std::wstring, std::wstring>>;

// Declarations that every document carries.
const NamespaceMap namespaceTable2 = {
    {L"", KOLT_NS L"/citygml/2.0"},
    {L"gml", KOLT_NS L"/gml"},
    {L"xal", L"urn:oasis:names:tc:ciq:xal:3"},
    {L"xlink", KOLT_W3 L"/1999/xlink"},
    {L"xsi", KOLT_W3 L"/2001/XMLSchema-instance"},
};

const NamespaceMap namespaceTable3 = {
    {L"", KOLT_NS L"/citygml/3.0"},
    {L"gml", KOLT_NS L"/gml/3.2"},
    {L"xal", L"urn:oasis:names:tc:ciq:xal:3"},
    {L"xlink", KOLT_W3 L"/1999/xlink"},
    {L"xsi", KOLT_W3 L"/2001/XMLSchema-instance"},
};

// Thematic modules, declared only when a prefix of theirs was used.
const SchemaMap schemaTable2 = {
    {L"app",
     {KOLT_NS L"/citygml/appearance/2.0", KOLT_XS L"/citygml/appearance/2.0/appearance.xsd"}},
    {L"bldg", {KOLT_NS L"/citygml/building/2.0", KOLT_XS L"/citygml/building/2.0/building.xsd"}},
    {L"brid", {KOLT_NS L"/citygml/bridge/2.0", KOLT_XS L"/citygml/bridge/2.0/bridge.xsd"}},
    {L"core", {KOLT_NS L"/citygml/2.0", KOLT_XSS L"/citygml/2.0/core.xsd"}},
    {L"dem", {KOLT_NS L"/citygml/relief/2.0", KOLT_XS L"/citygml/relief/2.0/relief.xsd"}},
    {L"frn",
     {KOLT_NS L"/citygml/cityfurniture/2.0",
      KOLT_XS L"/citygml/cityfurniture/2.0/cityFurniture.xsd"}},
    {L"gen", {KOLT_NS L"/citygml/generics/2.0", KOLT_XS L"/citygml/generics/2.0/generics.xsd"}},
    {L"grp",
     {KOLT_NS L"/citygml/cityobjectgroup/2.0",
      KOLT_XS L"/citygml/cityobjectgroup/2.0/cityObjectGroup.xsd"}},
    {L"luse", {KOLT_NS L"/citygml/landuse/2.0", KOLT_XS L"/citygml/landuse/2.0/landUse.xsd"}},
    {L"trans",
     {KOLT_NS L"/citygml/transportation/2.0",
      KOLT_XS L"/citygml/transportation/2.0/transportation.xsd"}},
    {L"tun", {KOLT_NS L"/citygml/tunnel/2.0", KOLT_XS L"/citygml/tunnel/2.0/tunnel.xsd"}},
    {L"veg",
     {KOLT_NS L"/citygml/vegetation/2.0", KOLT_XS L"/citygml/vegetation/2.0/vegetation.xsd"}},
    {L"wtr", {KOLT_NS L"/citygml/waterbody/2.0", KOLT_XS L"/citygml/waterbody/2.0/waterBody.xsd"}},
};

const SchemaMap schemaTable3 = {
    {L"app",
     {KOLT_NS L"/citygml/appearance/3.0", KOLT_XS L"/citygml/appearance/3.0/appearance.xsd"}},
    {L"bldg", {KOLT_NS L"/citygml/building/3.0", KOLT_XS L"/citygml/building/3.0/building.xsd"}},
    {L"brid", {KOLT_NS L"/citygml/bridge/3.0", KOLT_XS L"/citygml/bridge/3.0/bridge.xsd"}},
    {L"con",
     {KOLT_NS L"/citygml/construction/3.0", KOLT_XS L"/citygml/construction/3.0/construction.xsd"}},
    {L"core", {KOLT_NS L"/citygml/3.0", KOLT_XSS L"/citygml/3.0/core.xsd"}},
    {L"dem", {KOLT_NS L"/citygml/relief/3.0", KOLT_XS L"/citygml/relief/3.0/relief.xsd"}},
    {L"dyn", {KOLT_NS L"/citygml/dynamizer/3.0/", KOLT_XS L"/citygml/dynamizer/3.0/dynamizer.xsd"}},
    {L"frn",
     {KOLT_NS L"/citygml/cityfurniture/3.0",
      KOLT_XS L"/citygml/cityfurniture/3.0/cityFurniture.xsd"}},
    {L"gen", {KOLT_NS L"/citygml/generics/3.0", KOLT_XS L"/citygml/generics/3.0/generics.xsd"}},
    {L"grp",
     {KOLT_NS L"/citygml/cityobjectgroup/3.0",
      KOLT_XS L"/citygml/cityobjectgroup/3.0/cityObjectGroup.xsd"}},
    {L"luse", {KOLT_NS L"/citygml/landuse/3.0", KOLT_XS L"/citygml/landuse/3.0/landUse.xsd"}},
    {L"pcl",
     {KOLT_NS L"/citygml/pointcloud/3.0", KOLT_XS L"/citygml/pointcloud/3.0/pointCloud.xsd"}},
    {L"trans",
     {KOLT_NS L"/citygml/transportation/3.0",
      KOLT_XS L"/citygml/transportation/3.0/transportation.xsd"}},
    {L"tun", {KOLT_NS L"/citygml/tunnel/3.0", KOLT_XS L"/citygml/tunnel/3.0/tunnel.xsd"}},
    {L"veg",
     {KOLT_NS L"/citygml/vegetation/3.0", KOLT_XS L"/citygml/vegetation/3.0/vegetation.xsd"}},
    {L"wtr", {KOLT_NS L"/citygml/waterbody/3.0", KOLT_XS L"/citygml/waterbody/3.0/waterBody.xsd"}},
};

#undef KOLT_NS
#undef KOLT_XS
#undef KOLT_XSS
#undef KOLT_W3

NamespaceMap const& namespaceTableFor(std::int32_t version) {
    return version == 2 ? namespaceTable2 : namespaceTable3;
}

SchemaMap const& schemaTableFor(std::int32_t version) {
    return version == 2 ? schemaTable2 : schemaTable3;
}

void writeUtf8(XmlWriter& writer, std::wstring const& text) {
    writer.writeRaw(toUtf8(text));
}

} // namespace

NamespaceMap buildNamespaces(std::set<std::wstring> const& usedPrefixes, std::int32_t version) {
    SchemaMap const& schemas = schemaTableFor(version);
    NamespaceMap result;
    for (std::wstring const& prefix : usedPrefixes) {
        auto const found = schemas.find(prefix);
        if (found != schemas.end())
            result[prefix] = found->second.first;
    }
    const std::wstring location = buildSchemaLocation(result, version);
    // Kept among the namespace declarations on purpose, so it comes out as
    // "xmlns:schemaLocation" and never as "xsi:schemaLocation": the codec's documents are
    // defined that way; our schema tests list it as a known deviation.
    if (!location.empty())
        result[L"schemaLocation"] = location;
    for (auto const& row : namespaceTableFor(version))
        result.insert(row);
    return result;
}

std::wstring buildSchemaLocation(NamespaceMap const& namespaces, std::int32_t version) {
    NamespaceMap const& common = namespaceTableFor(version);
    SchemaMap const& schemas = schemaTableFor(version);
    std::wstring out;
    for (auto const& entry : namespaces) {
        if (common.count(entry.first) != 0)
            continue;
        auto const found = schemas.find(entry.first);
        if (found == schemas.end())
            continue;
        out += found->second.first;
        out += L' ';
        out += found->second.second;
        out += L' ';
    }
    if (!out.empty())
        out.pop_back();
    return out;
}

void writeRootOpen(XmlWriter& writer) {
    writer.writeRaw(writer.indentation());
    writer.writeRaw("<core:CityModel");
    for (auto const& [prefix, uri] : writer.namespaces) {
        if (prefix.empty()) {
            writer.writeRaw(" xmlns");
        } else {
            writer.writeRaw(" xmlns:");
            writeUtf8(writer, prefix);
        }
        writer.writeRaw("=\"");
        writeUtf8(writer, uri);
        writer.writeRaw("\"");
    }
    writer.writeRaw(">\n");
}

void writeCityObjectMembers(XmlWriter& writer,
                            std::vector<std::shared_ptr<CityElementNode>> const& group) {
    for (auto const& node : group) {
        writer.startElement(L"core:cityObjectMember");
        node->write(writer);
        writer.endElement();
    }
}

void writeAppearanceMembers(XmlWriter& writer,
                            std::vector<std::shared_ptr<AppearanceMemberNode>> const& members) {
    if (members.empty())
        return;
    writer.startElement(writer.version >= 3 ? L"core:appearanceMember" : L"app:appearanceMember");
    writer.startElement(L"app:Appearance");
    for (auto const& member : members)
        member->write(writer);
    writer.endElement();
    writer.endElement();
}

void writeEnvelope(XmlWriter& writer, Envelope const& envelope) {
    auto const& min = envelope.bounds.getMin();
    auto const& max = envelope.bounds.getMax();
    writer.writeRaw(writer.indentation() + "<gml:boundedBy>\n");
    ++writer.depth;
    writer.writeRaw(writer.indentation() + "<gml:Envelope ");
    if (!envelope.srsName.empty())
        writer.writeRaw("srsName=\"" + toUtf8(envelope.srsName) + "\" ");
    writer.writeRaw("srsDimension=\"3\">\n");
    ++writer.depth;
    writer.writeRaw(writer.indentation() + "<gml:lowerCorner>");
    writer.writeCoordinates(std::array<double, 3>{min[0], -max[2], min[1]});
    writer.writeRaw("</gml:lowerCorner>\n");
    writer.writeRaw(writer.indentation() + "<gml:upperCorner>");
    writer.writeCoordinates(std::array<double, 3>{max[0], -min[2], max[1]});
    writer.writeRaw("</gml:upperCorner>\n");
    --writer.depth;
    writer.writeRaw(writer.indentation() + "</gml:Envelope>\n");
    --writer.depth;
    writer.writeRaw(writer.indentation() + "</gml:boundedBy>\n");
}

} // namespace gml
