<?xml version="1.0" encoding="UTF-8"?>
<core:CityModel xmlns:core="http://www.opengis.net/citygml/2.0"
    xmlns:bldg="http://www.opengis.net/citygml/building/2.0"
    xmlns:app="http://www.opengis.net/citygml/appearance/2.0"
    xmlns:gen="http://www.opengis.net/citygml/generics/2.0"
    xmlns:gml="http://www.opengis.net/gml" xmlns:xlink="http://www.w3.org/1999/xlink">
<gml:boundedBy><gml:Envelope srsName="EPSG:25832"><gml:lowerCorner>0 0 0</gml:lowerCorner><gml:upperCorner>9 9 9</gml:upperCorner></gml:Envelope></gml:boundedBy><core:cityObjectMember><bldg:Building gml:id="a"><gml:boundedBy><gml:Envelope srsName="EPSG:4326"><gml:lowerCorner>0 0 0</gml:lowerCorner><gml:upperCorner>1 1 1</gml:upperCorner></gml:Envelope></gml:boundedBy><bldg:lod2MultiSurface><gml:MultiSurface><gml:surfaceMember><gml:Polygon gml:id="p"><gml:exterior><gml:LinearRing gml:id="p-r0"><gml:posList>0 0 0.000000 1 0 0.000000 1 1 0.000000 0 1 0.000000 0 0 0.000000</gml:posList></gml:LinearRing></gml:exterior></gml:Polygon></gml:surfaceMember></gml:MultiSurface></bldg:lod2MultiSurface></bldg:Building></core:cityObjectMember>
</core:CityModel>
