#pragma once

#include <string>

// The mesh path of a geometry: the parent's path followed by the geometry's normalised parser
// path. Without a usable parser path, the LOD stands in as
// "gml:lod<N>MultiSurface\gml:multisurface", which is not normalised and has no closing backslash.
std::wstring geometryMeshPath(std::wstring const& parentPath, std::wstring const& parserPath,
                              unsigned int lod);
