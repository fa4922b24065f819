#pragma once

#include <citygml/AppearanceTarget.h>
#include <citygml/LinearRing.h>

#include <memory>
#include <vector>

namespace citygml {

// gml:Polygon, gml:Triangle, gml:Rectangle or gml:PolygonPatch. Always has an exterior ring.
class Polygon : public AppearanceTarget {
public:
    explicit Polygon(std::string id);

    std::shared_ptr<LinearRing> exteriorRing() const { return m_exterior; }
    std::vector<std::shared_ptr<LinearRing>> const& interiorRings() const { return m_interior; }

    // Triangle corner indices into the concatenated ring vertices, exterior first; filled only
    // when the load asked for tesselation and gave a tesselator.
    std::vector<unsigned int> const& getIndices() const { return m_indices; }

private:
    friend class ModelBuilder;
    std::shared_ptr<LinearRing> m_exterior;
    std::vector<std::shared_ptr<LinearRing>> m_interior;
    std::vector<unsigned int> m_indices;
};

} // namespace citygml
