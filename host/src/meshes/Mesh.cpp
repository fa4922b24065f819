#include "koltx/Mesh.h"

namespace koltx {

Mesh::~Mesh() = default;

uint32_t const* Mesh::getFaceVertexIndices(uint32_t face) const {
    if (face >= getFaceCount())
        return nullptr;
    return vertexIndices.data() + faceVertexOffsets[face];
}

uint32_t Mesh::getFaceVertexCount(uint32_t face) const {
    if (face >= getFaceCount())
        return 0;
    return faceVertexOffsets[face + 1] - faceVertexOffsets[face];
}

std::vector<double> const& Mesh::getUVCoords(uint32_t uvSet) const {
    static std::vector<double> const none;
    return uvSet < uvSets.size() ? uvSets[uvSet].coords : none;
}

uint32_t const* Mesh::getFaceUVIndices(uint32_t face, uint32_t uvSet) const {
    if (getFaceUVCount(face, uvSet) == 0)
        return nullptr;
    return uvSets[uvSet].indices.data() + uvSets[uvSet].faceOffsets[face];
}

uint32_t Mesh::getFaceUVCount(uint32_t face, uint32_t uvSet) const {
    if (uvSet >= uvSets.size() || face >= getFaceCount())
        return 0;
    auto const& offsets = uvSets[uvSet].faceOffsets;
    return offsets[face + 1] - offsets[face];
}

uint32_t const* Mesh::getFaceHoleIndices(uint32_t face) const {
    if (getFaceHoleCount(face) == 0)
        return nullptr;
    return holeIndices.data() + faceHoleOffsets[face];
}

uint32_t Mesh::getFaceHoleCount(uint32_t face) const {
    if (face >= getFaceCount())
        return 0;
    return faceHoleOffsets[face + 1] - faceHoleOffsets[face];
}

bool Mesh::isHoleFace(uint32_t face) const {
    return face < holeFaces.size() && holeFaces[face];
}

} // namespace koltx
