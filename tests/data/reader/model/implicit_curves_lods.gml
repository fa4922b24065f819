<?xml version="1.0" encoding="UTF-8"?>
<core:CityModel xmlns:core="http://www.opengis.net/citygml/2.0"
  xmlns:bldg="http://www.opengis.net/citygml/building/2.0"
  xmlns:app="http://www.opengis.net/citygml/appearance/2.0"
  xmlns:gen="http://www.opengis.net/citygml/generics/2.0"
  xmlns:dem="http://www.opengis.net/citygml/relief/2.0"
  xmlns:gml="http://www.opengis.net/gml" xmlns:xlink="http://www.w3.org/1999/xlink"><core:cityObjectMember><bldg:Building gml:id="b">
      <bldg:lod2MultiCurve><gml:MultiCurve gml:id="mc"><gml:curveMember><gml:LineString>
      <gml:posList>0 0 0 1 1 1</gml:posList></gml:LineString></gml:curveMember></gml:MultiCurve>
      </bldg:lod2MultiCurve>
      <bldg:outerBuildingInstallation><bldg:BuildingInstallation gml:id="bi">
      <bldg:lod2ImplicitRepresentation><core:ImplicitGeometry><core:relativeGMLGeometry>
      <gml:MultiSurface gml:id="proto"><gml:surfaceMember><gml:Polygon gml:id="ip"><gml:exterior><gml:LinearRing><gml:posList>0 0 0 1 0 0 1 1 0 0 1 0 0 0 0</gml:posList></gml:LinearRing></gml:exterior></gml:Polygon></gml:surfaceMember></gml:MultiSurface>
      </core:relativeGMLGeometry></core:ImplicitGeometry></bldg:lod2ImplicitRepresentation>
      </bldg:BuildingInstallation></bldg:outerBuildingInstallation>
      <bldg:lod3MultiSurface><gml:MultiSurface gml:id="l3"><gml:surfaceMember><gml:Polygon><gml:exterior><gml:LinearRing><gml:posList>0 0 0 1 0 0 1 1 0 0 1 0 0 0 0</gml:posList></gml:LinearRing></gml:exterior></gml:Polygon></gml:surfaceMember></gml:MultiSurface>
      </bldg:lod3MultiSurface></bldg:Building></core:cityObjectMember></core:CityModel>
