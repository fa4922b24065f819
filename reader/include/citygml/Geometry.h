#pragma once

#include <citygml/AppearanceTarget.h>
#include <citygml/HierarchyTracker.h>
#include <citygml/ObjectList.h>
#include <citygml/Polygon.h>

#include <memory>
#include <string>
#include <vector>

namespace citygml {

namespace detail {
class Access; // the reader, which fills these fields while it reads a document
}

// A GML geometry aggregate (gml:Solid, gml:MultiSurface, ...). Geometries written inside it are
// its child geometries; polygons shared through xlink:href appear in every referring geometry.
class ObjectArena;

class Geometry : public AppearanceTarget, public HierarchyTracker {
public:
    enum class GeometryType {
        GT_Unknown,
        GT_Solid,
        GT_CompositeSolid,
        GT_MultiSolid,
        GT_MultiSurface,
        GT_CompositeSurface,
        GT_Shell,
        GT_Surface,
        GT_TriangulatedSurface,
        GT_Tin,
        GT_PolyhedralSurface,
        GT_OrientableSurface,
        GT_MultiGeometry,
        GT_MultiCurve,
        GT_CompositeCurve,
        GT_MultiPoint,
        GT_Polygon // a polygon that a feature property holds without an aggregate
    };

    Geometry(std::string_view id, GeometryType type, unsigned int lod, ObjectArena* arena);

    GeometryType getType() const { return m_type; }
    // Canonical tag of the element, e.g. "gml:multisurface".
    std::string const& getTypeAsString() const { return *m_tag; }
    unsigned int getLOD() const { return m_lod; }
    std::string_view getSRSName() const { return m_srsName; }

    unsigned int getPolygonsCount() const { return static_cast<unsigned int>(m_polygons.size()); }
    // Keeps the polygon alive on its own.
    std::shared_ptr<Polygon const> getPolygon(unsigned int i) const;
    // The same polygon without a shared pointer, valid as long as the geometry.
    Polygon const& polygon(unsigned int i) const { return *m_polygons.at(i); }
    // All of them, valid as long as the geometry.
    ObjectList<Polygon*> const& polygons() const { return m_polygons; }

    unsigned int getGeometriesCount() const { return static_cast<unsigned int>(m_children.size()); }
    Geometry const& getGeometry(unsigned int i) const { return *m_children.at(i); }

protected:
    std::string_view trackedId() const override { return getId(); }

private:
    friend class detail::Access;
    GeometryType m_type;
    unsigned int m_lod;
    std::string const* m_tag; // points into a static table
    std::string_view m_srsName;
    ObjectList<Polygon*> m_polygons;
    ObjectList<Geometry*> m_children;
};

} // namespace citygml
