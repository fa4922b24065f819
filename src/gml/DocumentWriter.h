#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace gml {

class AppearanceMemberNode;
class CityElementNode;
class XmlWriter;
struct Envelope;

using NamespaceMap = std::map<std::wstring, std::wstring>;

// The namespace declarations of the root element for a set of used prefixes. Version 2
// selects the CityGML 2.0 tables, every other version those of 3.0.
NamespaceMap buildNamespaces(std::set<std::wstring> const& usedPrefixes, std::int32_t version);
// Namespace and schema file of every thematic module among the keys, blank-separated.
std::wstring buildSchemaLocation(NamespaceMap const& namespaces, std::int32_t version);

void writeRootOpen(XmlWriter& writer);
void writeCityObjectMembers(XmlWriter& writer,
                            std::vector<std::shared_ptr<CityElementNode>> const& group);
void writeAppearanceMembers(XmlWriter& writer,
                            std::vector<std::shared_ptr<AppearanceMemberNode>> const& members);
// "gml:boundedBy" with the box turned from the host's axes into the document's.
void writeEnvelope(XmlWriter& writer, Envelope const& envelope);

} // namespace gml
