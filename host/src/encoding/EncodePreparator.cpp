#include "koltx/EncodePreparator.h"

#include "EncodePreparatorImpl.h"
#include "koltx/Geometry.h"

#include <stdexcept>
#include <utility>

namespace koltx {

using Flags = EncodePreparator::PreparationFlags;

Flags& Flags::instancing(bool value) {
    instancingValue = value;
    return *this;
}
Flags& Flags::meshMerging(MeshMerging::Action value) {
    meshMergingValue = value;
    return *this;
}
Flags& Flags::triangulate(bool value) {
    triangulateValue = value;
    return *this;
}
Flags& Flags::mergeVertices(bool value) {
    mergeVerticesValue = value;
    return *this;
}
Flags& Flags::mergeToleranceVertices(float value) {
    mergeToleranceValue = value;
    return *this;
}
Flags& Flags::cleanupVertexNormals(bool value) {
    cleanupVertexNormalsValue = value;
    return *this;
}
Flags& Flags::processVertexNormals(int32_t value) {
    processVertexNormalsValue = value;
    return *this;
}
Flags& Flags::cleanupUVs(bool value) {
    cleanupUVsValue = value;
    return *this;
}
Flags& Flags::processHoles(HoleProcessor::Action value) {
    processHolesValue = value;
    return *this;
}

EncodePreparator::FinalizedInstance::FinalizedInstance(std::shared_ptr<Geometry> geometry,
                                                       size_t initialShapeIndex, std::wstring name,
                                                       Shape::Transform const& transform,
                                                       ReportsPtr reports)
    : geometry(std::move(geometry)), initialShapeIndex(initialShapeIndex), name(std::move(name)),
      transform(transform), reports(std::move(reports)) {
    if (!this->geometry)
        throw std::invalid_argument("FinalizedInstance: null geometry");
}

std::shared_ptr<EncodePreparator>
EncodePreparator::create(bool alwaysCopy, NamePreparator& namePreparator,
                         NamePreparator::NamespacePtr const& instanceNames,
                         NamePreparator::NamespacePtr const& meshNames, kolt::Status* status) {
    if (!instanceNames || !meshNames) {
        if (status != nullptr) {
            *status = kolt::STATUS_ILLEGAL_VALUE;
            return nullptr;
        }
        throw std::invalid_argument("EncodePreparator: null name space");
    }
    if (status != nullptr)
        *status = kolt::STATUS_OK;
    return std::make_shared<EncodePreparatorImpl>(alwaysCopy, namePreparator, instanceNames,
                                                  meshNames);
}

EncodePreparator::~EncodePreparator() = default;

} // namespace koltx
