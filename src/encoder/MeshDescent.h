#pragma once

#include <gml/CityElementNode.h>
#include <gml/CityModelDocument.h>
#include <vocabulary/PathIterator.h>

#include <memory>
#include <string_view>

namespace koltx {
class Mesh;
}

// Goes down the rest of a mesh path below `parent`, reusing children by id and making what is
// missing: plain steps become city element nodes, GML geometry elements geometry nodes, and the
// innermost new geometry element gets one polygon per face of the mesh. Plain steps above the
// document's level of detail drop the branch. `iterator` stands on the current component.
// Inserts `prefix` into the document's used prefixes; a lookup of the few that are there
// first, since this runs for every component of every mesh.
void usePrefix(CityModelDocument& document, std::wstring_view prefix);

void addMesh(CityModelDocument& document, std::shared_ptr<gml::CityElementNode> const& parent,
             PathIterator& iterator, std::shared_ptr<koltx::Mesh> const& mesh, bool pathGiven);
