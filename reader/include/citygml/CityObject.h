#pragma once

#include <citygml/FeatureObject.h>
#include <citygml/Geometry.h>
#include <citygml/HierarchyTracker.h>
#include <citygml/ObjectList.h>

#include <memory>
#include <string>
#include <vector>

namespace citygml {

namespace detail {
class Access; // the reader, which fills these fields while it reads a document
}

// A city object (feature) of any thematic module and CityGML version.
class CityObject : public FeatureObject, public HierarchyTracker {
public:
    // Broad classes; the element itself is told by getTypeAsString() and the node path.
    enum class CityObjectsType {
        COT_Unknown,
        COT_GenericCityObject,
        COT_Building,
        COT_BuildingPart,
        COT_Room,
        COT_BuildingInstallation,
        COT_BuildingFurniture,
        COT_BuildingConstructiveElement,
        COT_BuildingUnit,
        COT_Storey,
        COT_Door,
        COT_Window,
        COT_BoundarySurface, // wall, roof, ground, closure, floor, ceiling ... surfaces
        COT_CityFurniture,
        COT_Transportation, // road, track, railway, square, traffic areas and spaces, ...
        COT_Vegetation,
        COT_WaterBody,
        COT_WaterSurface,
        COT_ReliefFeature,
        COT_ReliefComponent,
        COT_LandUse,
        COT_Tunnel,
        COT_Bridge,
        COT_CityObjectGroup,
        COT_OtherConstruction,
        COT_PointCloud,
        COT_Other
    };

    CityObject(std::string_view id, CityObjectsType type, std::string const* tag);

    CityObjectsType getType() const { return m_type; }
    // Canonical tag of the element, e.g. "bldg:wallsurface".
    std::string const& getTypeAsString() const { return *m_tag; }

    unsigned int getChildCityObjectsCount() const {
        return static_cast<unsigned int>(m_children.size());
    }
    CityObject const& getChildCityObject(unsigned int i) const { return *m_children.at(i); }

    unsigned int getGeometriesCount() const {
        return static_cast<unsigned int>(m_geometries.size());
    }
    Geometry const& getGeometry(unsigned int i) const { return *m_geometries.at(i); }

protected:
    std::string_view trackedId() const override { return getId(); }

private:
    friend class detail::Access;
    CityObjectsType m_type;
    std::string const* m_tag; // points into a static table
    ObjectList<CityObject*> m_children;
    ObjectList<Geometry*> m_geometries;
};

} // namespace citygml
