#pragma once

#include <gml/CityModelDocument.h>
#include <gml/Envelope.h>

#include <cstdint>
#include <map>
#include <memory>
#include <string>

namespace kolt {
class AttributeMap;
}

// Places the prepared meshes of one initial shape into the document: each mesh name is read as
// a mesh path (or replaced by the default path), the first shape's paths vote on the CityGML
// version, and the top-level node of each path is found or made. Appends one group to
// `document.memberGroups`. The attributes and the envelope go to the shape's first top-level node.
void addInitialShape(CityModelDocument& document,
                     std::map<std::wstring, std::wstring> const& attributes,
                     std::shared_ptr<gml::Envelope> const& envelope,
                     std::uint64_t initialShapeIndex, kolt::AttributeMap const* options);

// The path given to a mesh without one: all such meshes of a shape meet in one construction.
std::wstring defaultMeshPath(std::wstring const& constructionId, std::wstring const& u1,
                             std::wstring const& u2, std::wstring const& u3);
