<?xml version="1.0" encoding="UTF-8"?>
<core:CityModel xmlns:core="http://www.opengis.net/citygml/2.0" xmlns:bldg="http://www.opengis.net/citygml/building/2.0" xmlns:gml="http://www.opengis.net/gml" xmlns:gen="http://www.opengis.net/citygml/generics/2.0">
<gml:boundedBy><gml:Envelope srsName="EPSG:25832" srsDimension="3"><gml:lowerCorner>0 0 0</gml:lowerCorner><gml:upperCorner>10 10 10</gml:upperCorner></gml:Envelope></gml:boundedBy>
<core:cityObjectMember><bldg:Building gml:id="b1"><gml:name>House</gml:name><gen:doubleAttribute name="h"><gen:value>2.5</gen:value></gen:doubleAttribute><bldg:measuredHeight uom="m">9</bldg:measuredHeight>
<bldg:boundedBy><bldg:WallSurface gml:id="w1"><bldg:lod2MultiSurface><gml:MultiSurface gml:id="ms1"><gml:surfaceMember><gml:Polygon gml:id="p1"><gml:exterior><gml:LinearRing gml:id="r1"><gml:posList srsDimension="3">0 0 0 1 0 0 1 0 1 0 0 1</gml:posList></gml:LinearRing></gml:exterior></gml:Polygon></gml:surfaceMember></gml:MultiSurface></bldg:lod2MultiSurface></bldg:WallSurface></bldg:boundedBy>
<bldg:lod2Solid><gml:Solid gml:id="s1"><gml:exterior><gml:CompositeSurface gml:id="cs1"><gml:surfaceMember xlink:href="#p1" xmlns:xlink="http://www.w3.org/1999/xlink"/></gml:CompositeSurface></gml:exterior></gml:Solid></bldg:lod2Solid>
</bldg:Building></core:cityObjectMember></core:CityModel>
