#pragma once

#include <gml/CityElementNode.h>
#include <gml/CityModelDocument.h>
#include <vocabulary/PathIterator.h>

#include <memory>

namespace koltx {
class Mesh;
}

// Goes down the rest of a mesh path below `parent`, reusing children by id and making what is
// missing: plain steps become city element nodes, GML geometry elements geometry nodes, and the
// innermost new geometry element gets one polygon per face of the mesh. Plain steps above the
// document's level of detail drop the branch. `iterator` stands on the current component.
void addMesh(CityModelDocument& document, std::shared_ptr<gml::CityElementNode> const& parent,
             PathIterator& iterator, std::shared_ptr<koltx::Mesh> const& mesh, bool pathGiven);
