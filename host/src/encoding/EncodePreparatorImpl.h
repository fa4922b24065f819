#pragma once

#include "koltx/EncodePreparator.h"
#include "koltx/KOLTUtils.h"

#include <memory>
#include <string>
#include <vector>

namespace koltx {

class Mesh;
struct MeshData;

class EncodePreparatorImpl : public EncodePreparator {
public:
    EncodePreparatorImpl(bool alwaysCopy, NamePreparator& namePreparator,
                         NamePreparator::NamespacePtr instanceNames,
                         NamePreparator::NamespacePtr meshNames);
    ~EncodePreparatorImpl() override;

    void addFallbackShape(kolt::Cache* cache, InitialShape const* initialShape,
                          size_t initialShapeIndex) override;
    void addLeafShape(kolt::Cache* cache, std::shared_ptr<Shape> const& leaf,
                      kolt::AttributeMap const* initialShapeAttributes,
                      ReportsPtr const& reports) override;
    void fetchInstances(std::vector<FinalizedInstance>& instances, PreparationFlags const& flags,
                        kolt::Status* status) override;
    void getBoundingBox(BoundingBox& box) const override;

private:
    struct Item {
        std::shared_ptr<Geometry> geometry;
        Shape::Transform transform;
        bool identity;
        ReportsPtr reports;
    };

    void add(std::shared_ptr<Geometry> const& geometry, Shape::Transform const& transform,
             ReportsPtr const& reports);
    std::shared_ptr<Mesh> finish(MeshData& data, PreparationFlags const& flags) const;
    // Takes the arrays of a mesh that nothing else holds instead of copying them.
    std::shared_ptr<Mesh> prepare(std::shared_ptr<Mesh> mesh, Shape::Transform const& transform,
                                  bool identity, PreparationFlags const& flags) const;
    std::shared_ptr<Geometry> makeGeometry(std::vector<std::shared_ptr<Mesh>> const& meshes) const;

    bool alwaysCopy;
    NamePreparator& namePreparator;
    NamePreparator::NamespacePtr instanceNames;
    NamePreparator::NamespacePtr meshNames;

    std::vector<Item> pending;
    std::shared_ptr<kolt::AttributeMap const> pendingAttributes;
    std::wstring pendingName;
    bool pendingHasIndex = false;
    size_t pendingIndex = 0;
    BoundingBox box;
    size_t fetches = 0;
};

} // namespace koltx
