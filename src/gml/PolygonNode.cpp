#include "gml/PolygonNode.h"

#include "gml/XmlWriter.h"

#include <koltx/Mesh.h>

#include <array>
#include <stdexcept>
#include <vector>

namespace gml {

namespace {

// The surface tags a mesh path names nearly always; the writer only tells these four apart.
std::array<std::wstring_view, 6> const knownSurfaceTags = {
    L"gml:MultiSurface", L"gml:CompositeSurface",    L"gml:Solid",
    L"gml:Surface",      L"gml:TriangulatedSurface", L"gml:OrientableSurface",
};

std::wstring_view const polySuffix = L"_poly";

void appendNumber(std::wstring& out, std::uint32_t value) {
    wchar_t digits[10];
    int count = 0;
    do {
        digits[count++] = static_cast<wchar_t>(L'0' + value % 10);
        value /= 10;
    } while (value != 0);
    while (count > 0)
        out += digits[--count];
}

} // namespace

PolygonNode::PolygonNode(std::shared_ptr<koltx::Mesh> mesh, std::wstring_view identifier,
                         std::uint32_t faceIndex, std::wstring_view surfaceTag)
    : CityElementNode(std::wstring_view(), true, std::wstring_view()), mesh(std::move(mesh)),
      faceIndex(faceIndex) {
    compactId = parseUuid(identifier, identifierBytes);
    if (!compactId)
        id = identifier;
    setSurfaceTag(surfaceTag);
    ringBytes = newUuid();
}

PolygonNode::PolygonNode(std::shared_ptr<koltx::Mesh> mesh, UuidBytes const& identifier,
                         std::uint32_t faceIndex, std::wstring_view surfaceTag)
    : CityElementNode(std::wstring_view(), true, std::wstring_view()), mesh(std::move(mesh)),
      faceIndex(faceIndex), compactId(true), identifierBytes(identifier) {
    setSurfaceTag(surfaceTag);
    ringBytes = newUuid();
}

void PolygonNode::setSurfaceTag(std::wstring_view surfaceTag) {
    tagView = std::wstring_view();
    for (std::wstring_view row : knownSurfaceTags)
        if (row == surfaceTag)
            tagView = row;
    if (tagView.data() == nullptr) {
        ownTag = surfaceTag;
        tagView = ownTag;
    }
    if (surfaceTag == std::wstring_view(L"gml:Surface"))
        form = Form::Patch;
    else if (surfaceTag == std::wstring_view(L"gml:TriangulatedSurface"))
        form = Form::Triangle;
    else if (surfaceTag == std::wstring_view(L"gml:OrientableSurface"))
        form = Form::Orientable;
    else
        form = Form::Polygon;
}

void PolygonNode::appendIdentifier(std::wstring& out) const {
    if (compactId)
        appendUuid(out, identifierBytes);
    else
        out += id;
}

void PolygonNode::appendPolygonId(std::wstring& out) const {
    if (hasPolygonId())
        appendIdText(out);
}

void PolygonNode::appendRingId(std::wstring& out) const {
    if (hasPolygonId()) {
        appendIdText(out);
        out += L'.';
    }
    appendUuid(out, ringBytes);
}

void PolygonNode::appendIdText(std::wstring& out) const {
    appendIdentifier(out);
    out += polySuffix;
    appendNumber(out, faceIndex);
}

bool PolygonNode::hasId(std::wstring_view childId) const {
    if (!compactId)
        return CityElementNode::hasId(childId);
    UuidBytes bytes;
    return parseUuid(childId, bytes) && bytes == identifierBytes;
}

std::wstring PolygonNode::identifier() const {
    std::wstring result;
    appendIdentifier(result);
    return result;
}

std::wstring PolygonNode::polygonId() const {
    std::wstring result;
    appendPolygonId(result);
    return result;
}

std::wstring PolygonNode::ringId() const {
    std::wstring result;
    appendRingId(result);
    return result;
}

void PolygonNode::write(XmlWriter& writer) {
    if (!mesh || faceIndex >= mesh->getFaceCount())
        throw std::out_of_range("Polygon face is not in its mesh.");
    // One text buffer for the ids of all polygons of the thread.
    thread_local std::wstring ids;
    bool const orientable = form == Form::Orientable;
    if (form == Form::Patch) {
        writer.startElement(L"gml:PolygonPatch");
    } else if (form == Form::Triangle) {
        writer.startElement(L"gml:Triangle");
    } else {
        if (orientable) {
            writer.startElement(L"gml:OrientableSurface");
            writer.startElement(L"gml:baseSurface");
        }
        ids.clear();
        appendPolygonId(ids);
        writer.startElement(L"gml:Polygon", ids);
    }
    writer.startElement(L"gml:exterior");
    ids.clear();
    appendRingId(ids);
    writer.startElement(L"gml:LinearRing", ids);

    // The host's second axis is up, the document's third: (x, y, z) becomes (x, -z, y).
    std::vector<double> const& coords = mesh->getVertexCoords();
    std::uint32_t const* indices = mesh->getFaceVertexIndices(faceIndex);
    const std::uint32_t count = mesh->getFaceVertexCount(faceIndex);
    // One buffer for all polygons of the thread: a document has hundreds of thousands.
    thread_local std::vector<double> list;
    list.clear();
    for (std::uint32_t i = 0; i < count; ++i) {
        double const* vertex = coords.data() + static_cast<std::size_t>(indices[i]) * 3;
        list.push_back(vertex[0]);
        list.push_back(-vertex[2]);
        list.push_back(vertex[1]);
    }
    writer.writeCoordinatesElement(L"gml:posList", list.data(), list.size(), 3, L"srsDimension",
                                   L"3");

    writer.endElement();
    writer.endElement();
    writer.endElement();
    if (orientable) {
        writer.endElement();
        writer.endElement();
    }
}

} // namespace gml
