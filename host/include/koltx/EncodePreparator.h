#pragma once

#include "kolt/Status.h"
#include "koltx/BoundingBox.h"
#include "koltx/HoleProcessor.h"
#include "koltx/MeshMerging.h"
#include "koltx/NamePreparator.h"
#include "koltx/Reports.h"
#include "koltx/Shape.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace kolt {
class AttributeMap;
class Cache;
} // namespace kolt

namespace koltx {

class Geometry;
class InitialShape;

// Turns the shapes that an encoder is given into geometry ready to be written: leaf transforms
// applied, meshes merged or kept, holes processed, vertices merged. Shapes are added per initial
// shape and fetched as finished instances once that initial shape is complete.
class EncodePreparator {
public:
    class PreparationFlags {
    public:
        PreparationFlags() = default;

        // One instance per leaf, its geometry untransformed and its transform kept, instead of
        // one instance per initial shape in world coordinates.
        PreparationFlags& instancing(bool value);
        PreparationFlags& meshMerging(MeshMerging::Action value);
        // Every face split into triangles.
        PreparationFlags& triangulate(bool value);
        PreparationFlags& mergeVertices(bool value);
        PreparationFlags& mergeToleranceVertices(float value);
        // Our meshes carry no normals; these two are kept for callers that set them.
        PreparationFlags& cleanupVertexNormals(bool value);
        PreparationFlags& processVertexNormals(int32_t value);
        // Unused UV coordinates dropped and equal ones joined.
        PreparationFlags& cleanupUVs(bool value);
        PreparationFlags& processHoles(HoleProcessor::Action value);

        bool getInstancing() const { return instancingValue; }
        MeshMerging::Action getMeshMerging() const { return meshMergingValue; }
        bool getTriangulate() const { return triangulateValue; }
        bool getMergeVertices() const { return mergeVerticesValue; }
        float getMergeToleranceVertices() const { return mergeToleranceValue; }
        bool getCleanupVertexNormals() const { return cleanupVertexNormalsValue; }
        int32_t getProcessVertexNormals() const { return processVertexNormalsValue; }
        bool getCleanupUVs() const { return cleanupUVsValue; }
        HoleProcessor::Action getProcessHoles() const { return processHolesValue; }

    private:
        bool instancingValue = false;
        MeshMerging::Action meshMergingValue = MeshMerging::KEEP;
        bool triangulateValue = false;
        bool mergeVerticesValue = false;
        float mergeToleranceValue = 0.0f;
        bool cleanupVertexNormalsValue = false;
        int32_t processVertexNormalsValue = 0;
        bool cleanupUVsValue = false;
        HoleProcessor::Action processHolesValue = HoleProcessor::PASS;
    };

    class FinalizedInstance {
    public:
        FinalizedInstance(std::shared_ptr<Geometry> geometry, size_t initialShapeIndex,
                          std::wstring name, Shape::Transform const& transform, ReportsPtr reports);

        // Never null.
        std::shared_ptr<Geometry> const& getGeometry() const { return geometry; }
        // The order number of the initial shape among those added (fallbacks give their own).
        size_t getInitialShapeIndex() const { return initialShapeIndex; }
        // The initial shape's name, unique among the instances of this preparator.
        std::wstring const& getName() const { return name; }
        // Identity unless instancing.
        Shape::Transform const& getTransform() const { return transform; }
        // The reports given with the leaf (instancing) or the first non-null ones; may be null.
        ReportsPtr const& getReports() const { return reports; }

    private:
        std::shared_ptr<Geometry> geometry;
        size_t initialShapeIndex;
        std::wstring name;
        Shape::Transform transform;
        ReportsPtr reports;
    };

    // `alwaysCopy`: finished meshes are always new objects; otherwise a mesh that needs no change
    // is handed on as it was added. Instance names are made unique in `instanceNames`, names of
    // merged meshes in `meshNames`. Neither the name preparator nor the spaces may be null.
    static std::shared_ptr<EncodePreparator>
    create(bool alwaysCopy, NamePreparator& namePreparator,
           NamePreparator::NamespacePtr const& instanceNames,
           NamePreparator::NamespacePtr const& meshNames, kolt::Status* status);

    // Adds the initial shape's own geometry, untransformed; nothing when it has none.
    virtual void addFallbackShape(kolt::Cache* cache, InitialShape const* initialShape,
                                  size_t initialShapeIndex) = 0;
    // Adds a leaf. Throws std::invalid_argument for a null leaf or one without geometry.
    virtual void addLeafShape(kolt::Cache* cache, std::shared_ptr<Shape> const& leaf,
                              kolt::AttributeMap const* initialShapeAttributes,
                              ReportsPtr const& reports) = 0;
    // Appends the instances of everything added since the last fetch, with `flags` applied.
    // On failure `status` (or, when null, an exception) reports it and nothing is appended.
    virtual void fetchInstances(std::vector<FinalizedInstance>& instances,
                                PreparationFlags const& flags, kolt::Status* status) = 0;
    // The box, in world coordinates, of what was added since the last fetch: the current initial
    // shape. Empty (invalid) when nothing was added.
    virtual void getBoundingBox(BoundingBox& box) const = 0;

    virtual ~EncodePreparator();

protected:
    EncodePreparator() = default;
};

} // namespace koltx
