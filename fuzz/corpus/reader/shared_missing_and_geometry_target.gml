<?xml version="1.0"?>
<CityModel xmlns="http://www.opengis.net/citygml/2.0" xmlns:app="http://www.opengis.net/citygml/appearance/2.0" xmlns:bldg="http://www.opengis.net/citygml/building/2.0" xmlns:gml="http://www.opengis.net/gml" xmlns:xlink="http://www.w3.org/1999/xlink">
<cityObjectMember><bldg:Building><bldg:lod2MultiSurface><gml:MultiSurface gml:id="ms"><gml:surfaceMember xlink:href="#gone"/><gml:surfaceMember><gml:Polygon gml:id="p"><gml:exterior><gml:LinearRing><gml:posList>0 0 0 1 0 0 1 1 0</gml:posList></gml:LinearRing></gml:exterior></gml:Polygon></gml:surfaceMember></gml:MultiSurface></bldg:lod2MultiSurface></bldg:Building></cityObjectMember>
<appearanceMember><app:Appearance><app:surfaceDataMember><app:X3DMaterial><app:target>#ms</app:target></app:X3DMaterial></app:surfaceDataMember></app:Appearance></appearanceMember>
</CityModel>
