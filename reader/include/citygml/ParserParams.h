#pragma once

namespace citygml {

class ParserParams {
public:
    // Ask the given tesselator for triangles of every polygon; rings stay as they are either way.
    bool tesselate = true;
    // Kept for callers written against other readers: rings are never rewritten.
    bool keepVertices = true;
    // Only geometries whose LOD lies in [minLOD, maxLOD] are kept.
    unsigned int minLOD = 0;
    unsigned int maxLOD = 4;
};

} // namespace citygml
