#pragma once

#include <string>
#include <vector>

namespace testsupport {

// A CityGML document of `version` (1, 2 or 3) around `members`, with the prefixes core, bldg,
// app, gen, gml and xlink declared.
std::string cityModel(std::string const& members, int version = 2);

// A gml:Polygon with an exterior ring and optional interior rings; the rings are named
// <id>-r0, <id>-r1, ...
std::string polygon(std::string const& id, std::string const& exterior,
                    std::vector<std::string> const& interiors = {});

// A MultiSurface (with an id when given) of `polygons` inside the property element `property`.
std::string multiSurface(std::string const& property, std::vector<std::string> const& polygons,
                         std::string const& id = "");

// The closed ring of the unit square at height z.
std::string unitSquare(double z = 0);

} // namespace testsupport
