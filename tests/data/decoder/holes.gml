<?xml version="1.0" encoding="UTF-8"?>
<core:CityModel xmlns:core="http://www.opengis.net/citygml/2.0"
    xmlns:bldg="http://www.opengis.net/citygml/building/2.0"
    xmlns:app="http://www.opengis.net/citygml/appearance/2.0"
    xmlns:gen="http://www.opengis.net/citygml/generics/2.0"
    xmlns:gml="http://www.opengis.net/gml" xmlns:xlink="http://www.w3.org/1999/xlink">
<core:cityObjectMember><bldg:Building gml:id="b"><bldg:lod2MultiSurface><gml:MultiSurface><gml:surfaceMember><gml:Polygon gml:id="p"><gml:exterior><gml:LinearRing gml:id="p-r0"><gml:posList>0 0 0 4 0 0 4 4 0 0 4 0 0 0 0</gml:posList></gml:LinearRing></gml:exterior><gml:interior><gml:LinearRing gml:id="p-r1"><gml:posList>1 1 0 1 2 0 2 2 0 2 1 0 1 1 0</gml:posList></gml:LinearRing></gml:interior><gml:interior><gml:LinearRing gml:id="p-r2"><gml:posList>3 3 0 3 3.5 0 3.5 3 0 3 3 0</gml:posList></gml:LinearRing></gml:interior></gml:Polygon></gml:surfaceMember><gml:surfaceMember><gml:Polygon gml:id="q"><gml:exterior><gml:LinearRing gml:id="q-r0"><gml:posList>0 0 1.000000 1 0 1.000000 1 1 1.000000 0 1 1.000000 0 0 1.000000</gml:posList></gml:LinearRing></gml:exterior></gml:Polygon></gml:surfaceMember></gml:MultiSurface></bldg:lod2MultiSurface></bldg:Building></core:cityObjectMember>
</core:CityModel>
