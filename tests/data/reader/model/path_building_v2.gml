<?xml version="1.0" encoding="UTF-8"?>
<core:CityModel xmlns:core="http://www.opengis.net/citygml/2.0"
  xmlns:bldg="http://www.opengis.net/citygml/building/2.0"
  xmlns:app="http://www.opengis.net/citygml/appearance/2.0"
  xmlns:gen="http://www.opengis.net/citygml/generics/2.0"
  xmlns:dem="http://www.opengis.net/citygml/relief/2.0"
  xmlns:gml="http://www.opengis.net/gml" xmlns:xlink="http://www.w3.org/1999/xlink"><core:cityObjectMember><bldg:Building gml:id="b1">
      <bldg:boundedBy><bldg:WallSurface gml:id="w1"><bldg:lod2MultiSurface>
        <gml:MultiSurface gml:id="ms1"><gml:surfaceMember><gml:Polygon gml:id="p1"><gml:exterior><gml:LinearRing><gml:posList>0 0 0 1 0 0 1 1 0 0 1 0 0 0 0</gml:posList></gml:LinearRing></gml:exterior></gml:Polygon></gml:surfaceMember></gml:MultiSurface>
      </bldg:lod2MultiSurface></bldg:WallSurface></bldg:boundedBy>
      <bldg:lod2Solid><gml:Solid gml:id="s1"><gml:exterior><gml:CompositeSurface gml:id="cs1">
        <gml:surfaceMember xlink:href="#p1"/></gml:CompositeSurface></gml:exterior></gml:Solid>
      </bldg:lod2Solid>
      <bldg:consistsOfBuildingPart><bldg:BuildingPart gml:id="bp1"/></bldg:consistsOfBuildingPart>
    </bldg:Building></core:cityObjectMember></core:CityModel>
