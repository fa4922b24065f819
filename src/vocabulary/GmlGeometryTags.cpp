#include "vocabulary/GmlGeometryTags.h"

#include <cwctype>

std::array<std::wstring_view, 14> const GmlGeometryTags = {
    L"gml:CompositeSolid",
    L"gml:Solid",
    L"gml:MultiSurface",
    L"gml:CompositeSurface",
    L"gml:TriangulatedSurface",
    L"gml:OrientableSurface",
    L"gml:MultiSolid",
    L"gml:CompositeSolid",
    L"gml:Shell",
    L"gml:PolyhedralSurface",
    L"gml:Surface",
    L"gml:MultiCurve",
    L"gml:MultiPoint",
    L"gml:MultiGeometry",
};

namespace {

bool equalsIgnoringCase(std::wstring_view a, std::wstring_view b) {
    if (a.size() != b.size())
        return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (std::towlower(static_cast<wint_t>(a[i])) != std::towlower(static_cast<wint_t>(b[i])))
            return false;
    }
    return true;
}

} // namespace

bool isGmlGeometryTag(std::wstring_view tag) {
    for (std::wstring_view row : GmlGeometryTags) {
        if (equalsIgnoringCase(row, tag))
            return true;
    }
    return false;
}

std::wstring_view canonicalGmlGeometryTag(std::wstring_view tag) {
    for (std::wstring_view row : GmlGeometryTags) {
        if (equalsIgnoringCase(row, tag))
            return row;
    }
    return tag;
}
