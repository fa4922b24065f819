#include "koltx/Geometry.h"

namespace koltx {

Geometry::Geometry(std::shared_ptr<URI> uri, std::vector<std::shared_ptr<Mesh>> meshes,
                   KOLTUtils::AttributeMapPtr attributes)
    : Content(std::move(uri)), meshes(std::move(meshes)), attributes(std::move(attributes)) {}

Geometry::~Geometry() = default;

kolt::ContentType Geometry::getContentType() const {
    return kolt::CT_GEOMETRY;
}

BoundingBox Geometry::getBoundingBox() const {
    BoundingBox box;
    for (auto const& mesh : meshes)
        box.addPoints(mesh->getVertexCoords());
    return box;
}

uint64_t Geometry::getFaceCount() const {
    uint64_t count = 0;
    for (auto const& mesh : meshes)
        count += mesh->getFaceCount();
    return count;
}

uint64_t Geometry::getVertexCount() const {
    uint64_t count = 0;
    for (auto const& mesh : meshes)
        count += mesh->getVertexCount();
    return count;
}

} // namespace koltx
