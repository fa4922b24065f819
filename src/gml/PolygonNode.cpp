#include "gml/PolygonNode.h"

#include "gml/Identifiers.h"
#include "gml/XmlWriter.h"

#include <koltx/Mesh.h>

#include <stdexcept>
#include <vector>

namespace gml {

namespace {

bool isPatchSurface(std::wstring const& surfaceTag) {
    return surfaceTag == L"gml:Surface" || surfaceTag == L"gml:TriangulatedSurface";
}

} // namespace

PolygonNode::PolygonNode(std::shared_ptr<koltx::Mesh> mesh, std::wstring_view identifier,
                         std::uint32_t faceIndex, std::wstring_view surfaceTag)
    : CityElementNode(identifier, true, std::wstring_view()), mesh(std::move(mesh)),
      faceIndex(faceIndex), surfaceTag(surfaceTag) {
    const std::wstring polygon = polygonId();
    const std::wstring fresh = newUuidString();
    ringId = polygon.empty() ? fresh : polygon + L"." + fresh;
}

std::wstring PolygonNode::polygonId() const {
    if (isPatchSurface(surfaceTag))
        return std::wstring();
    return id + L"_poly" + std::to_wstring(faceIndex);
}

void PolygonNode::write(XmlWriter& writer) {
    if (!mesh || faceIndex >= mesh->getFaceCount())
        throw std::out_of_range("Polygon face is not in its mesh.");
    bool const orientable = surfaceTag == L"gml:OrientableSurface";
    if (surfaceTag == L"gml:Surface") {
        writer.startElement(L"gml:PolygonPatch");
    } else if (surfaceTag == L"gml:TriangulatedSurface") {
        writer.startElement(L"gml:Triangle");
    } else {
        if (orientable) {
            writer.startElement(L"gml:OrientableSurface");
            writer.startElement(L"gml:baseSurface");
        }
        writer.startElement(L"gml:Polygon", polygonId());
    }
    writer.startElement(L"gml:exterior");
    writer.startElement(L"gml:LinearRing", ringId);

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
    static const AttributeTable dimension{{L"srsDimension", L"3"}};
    writer.writeCoordinatesElement(L"gml:posList", list, 3, dimension);

    writer.endElement();
    writer.endElement();
    writer.endElement();
    if (orientable) {
        writer.endElement();
        writer.endElement();
    }
}

} // namespace gml
