#pragma once

#include <citygml/AppearanceTarget.h>
#include <citygml/LinearRing.h>
#include <citygml/ObjectList.h>

#include <memory>
#include <vector>

namespace citygml {

namespace detail {
class Access; // the reader, which fills these fields while it reads a document
}

class ObjectArena;

// gml:Polygon, gml:Triangle, gml:Rectangle or gml:PolygonPatch. Always has an exterior ring.
class Polygon : public AppearanceTarget {
public:
    Polygon(std::string_view id, ObjectArena* arena);

    // Rings stay valid while any pointer to them or to the model is held.
    std::shared_ptr<LinearRing> exteriorRing() const;
    std::vector<std::shared_ptr<LinearRing>> interiorRings() const;

    // The rings without shared pointers, valid as long as the polygon.
    LinearRing const* exterior() const { return m_exterior; }
    ObjectList<LinearRing*> const& interiors() const { return m_interior; }

    // Triangle corner indices into the concatenated ring vertices, exterior first; filled only
    // when the load asked for tesselation and gave a tesselator.
    std::vector<unsigned int> const& getIndices() const { return m_indices; }

private:
    friend class detail::Access;
    LinearRing* m_exterior = nullptr;
    ObjectList<LinearRing*> m_interior;
    std::vector<unsigned int> m_indices;
};

} // namespace citygml
