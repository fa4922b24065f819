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
        wchar_t const x = a[i];
        wchar_t const y = b[i];
        if (x == y)
            continue;
        // Tags are ASCII nearly always; towlower is only asked about the rest.
        if (x < 128 && y < 128) {
            auto lower = [](wchar_t c) { return c >= L'A' && c <= L'Z' ? c + (L'a' - L'A') : c; };
            if (lower(x) != lower(y))
                return false;
        } else if (std::towlower(static_cast<wint_t>(x)) != std::towlower(static_cast<wint_t>(y))) {
            return false;
        }
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
