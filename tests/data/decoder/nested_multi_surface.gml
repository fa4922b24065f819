<?xml version="1.0" encoding="UTF-8"?>
<core:CityModel xmlns:core="http://www.opengis.net/citygml/2.0"
    xmlns:bldg="http://www.opengis.net/citygml/building/2.0"
    xmlns:app="http://www.opengis.net/citygml/appearance/2.0"
    xmlns:gen="http://www.opengis.net/citygml/generics/2.0"
    xmlns:gml="http://www.opengis.net/gml" xmlns:xlink="http://www.w3.org/1999/xlink">
<core:cityObjectMember><gen:GenericCityObject gml:id="g"><gen:lod2Geometry><gml:MultiSurface gml:id="outer"><gml:surfaceMember><gml:Polygon gml:id="p"><gml:exterior><gml:LinearRing gml:id="p-r0"><gml:posList>0 0 0.000000 1 0 0.000000 1 1 0.000000 0 1 0.000000 0 0 0.000000</gml:posList></gml:LinearRing></gml:exterior></gml:Polygon></gml:surfaceMember><gml:surfaceMember><gml:CompositeSurface gml:id="inner"><gml:surfaceMember><gml:Polygon gml:id="q"><gml:exterior><gml:LinearRing gml:id="q-r0"><gml:posList>0 0 1.000000 1 0 1.000000 1 1 1.000000 0 1 1.000000 0 0 1.000000</gml:posList></gml:LinearRing></gml:exterior></gml:Polygon></gml:surfaceMember></gml:CompositeSurface></gml:surfaceMember></gml:MultiSurface></gen:lod2Geometry></gen:GenericCityObject></core:cityObjectMember>
</core:CityModel>
