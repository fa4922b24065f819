#include "gml/GeometryNode.h"

#include "gml/XmlWriter.h"

namespace gml {

GeometryNode::GeometryNode(std::wstring_view id, bool writeId, std::wstring_view tag,
                           std::shared_ptr<koltx::Mesh> mesh)
    : CityElementNode(id, writeId, tag), mesh(std::move(mesh)) {}

bool GeometryNode::isOrientableSurface() const {
    return tag == std::wstring_view(L"gml:OrientableSurface");
}

bool GeometryNode::writesOwnTag() const {
    return !isOrientableSurface();
}

void GeometryNode::writeContent(XmlWriter& writer) {
    wchar_t const* wrapper = nullptr;
    if (tag == std::wstring_view(L"gml:Surface"))
        wrapper = L"gml:patches";
    else if (tag == std::wstring_view(L"gml:Solid"))
        wrapper = L"gml:exterior";
    else if (tag == std::wstring_view(L"gml:TriangulatedSurface"))
        wrapper = writer.version < 3 ? L"gml:trianglePatches" : L"gml:patches";

    if (wrapper)
        writer.startElement(wrapper);
    for (auto const& child : children) {
        if (!wrapper && !child->isOrientableSurface()) {
            writer.startElement(L"gml:surfaceMember");
            child->write(writer);
            writer.endElement();
        } else {
            child->write(writer);
        }
    }
    if (wrapper || tag.empty())
        writer.endElement();
}

} // namespace gml
