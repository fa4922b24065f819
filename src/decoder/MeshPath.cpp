#include "decoder/MeshPath.h"

#include "vocabulary/PathNormalizer.h"

std::wstring geometryMeshPath(std::wstring const& parentPath, std::wstring const& parserPath,
                              unsigned int lod) {
    std::wstring own = normalizeNodePath(parserPath);
    if (own.empty())
        own = L"gml:lod" + std::to_wstring(lod) + L"MultiSurface\\gml:multisurface";
    if (parentPath.empty())
        return own;
    return parentPath + own;
}
