#pragma once

#include "kolt/AttributeMap.h"
#include "koltx/BoundingBox.h"
#include "koltx/Content.h"
#include "koltx/KOLTUtils.h"
#include "koltx/Mesh.h"

#include <memory>
#include <vector>

namespace koltx {

class GeometryBuilder;

// Meshes with attributes, as one decoder result or one encoder input.
class Geometry : public Content {
public:
    ~Geometry() override;

    kolt::ContentType getContentType() const override;
    std::vector<std::shared_ptr<Mesh>> const& getMeshes() const { return meshes; }
    // Never null; empty when no attribute was set.
    kolt::AttributeMap const* getAttributeMap() const { return attributes.get(); }
    BoundingBox getBoundingBox() const;
    uint64_t getFaceCount() const;
    uint64_t getVertexCount() const;

private:
    friend class GeometryBuilder;
    Geometry(std::shared_ptr<URI> uri, std::vector<std::shared_ptr<Mesh>> meshes,
             KOLTUtils::AttributeMapPtr attributes);

    std::vector<std::shared_ptr<Mesh>> meshes;
    KOLTUtils::AttributeMapPtr attributes;
};

using GeometryPtr = std::shared_ptr<Geometry>;

} // namespace koltx
