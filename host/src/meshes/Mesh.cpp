#include "koltx/Mesh.h"

namespace koltx {

Mesh::~Mesh() = default;

uint32_t const* Mesh::getFaceVertexIndices(uint32_t face) const {
    if (face >= getFaceCount())
        return nullptr;
    return arrays.indices.data() + arrays.faceOffsets[face];
}

uint32_t Mesh::getFaceVertexCount(uint32_t face) const {
    if (face >= getFaceCount())
        return 0;
    return arrays.faceOffsets[face + 1] - arrays.faceOffsets[face];
}

std::vector<double> const& Mesh::getUVCoords(uint32_t uvSet) const {
    static std::vector<double> const none;
    return uvSet < arrays.uvSets.size() ? arrays.uvSets[uvSet].coords : none;
}

uint32_t const* Mesh::getFaceUVIndices(uint32_t face, uint32_t uvSet) const {
    if (getFaceUVCount(face, uvSet) == 0)
        return nullptr;
    return arrays.uvSets[uvSet].indices.data() + arrays.uvSets[uvSet].faceOffsets[face];
}

uint32_t Mesh::getFaceUVCount(uint32_t face, uint32_t uvSet) const {
    if (uvSet >= arrays.uvSets.size() || face >= getFaceCount())
        return 0;
    auto const& offsets = arrays.uvSets[uvSet].faceOffsets;
    return offsets[face + 1] - offsets[face];
}

uint32_t const* Mesh::getFaceHoleIndices(uint32_t face) const {
    if (getFaceHoleCount(face) == 0)
        return nullptr;
    return arrays.holes.data() + arrays.holeOffsets[face];
}

uint32_t Mesh::getFaceHoleCount(uint32_t face) const {
    if (face >= getFaceCount())
        return 0;
    return arrays.holeOffsets[face + 1] - arrays.holeOffsets[face];
}

bool Mesh::isHoleFace(uint32_t face) const {
    return face < holeFaces.size() && holeFaces[face];
}

} // namespace koltx
