<?xml version="1.0" encoding="UTF-8"?>
<core:CityModel xmlns:core="http://www.opengis.net/citygml/2.0"
    xmlns:bldg="http://www.opengis.net/citygml/building/2.0"
    xmlns:app="http://www.opengis.net/citygml/appearance/2.0"
    xmlns:gen="http://www.opengis.net/citygml/generics/2.0"
    xmlns:gml="http://www.opengis.net/gml" xmlns:xlink="http://www.w3.org/1999/xlink">
<core:cityObjectMember><bldg:Building gml:id="a"><gen:doubleAttribute name="a"><gen:value>1.5</gen:value></gen:doubleAttribute><gen:intAttribute name="b"><gen:value>2</gen:value></gen:intAttribute><gen:stringAttribute name="c"><gen:value>x</gen:value></gen:stringAttribute><gen:dateAttribute name="d"><gen:value>2020-02-29</gen:value></gen:dateAttribute><gen:stringAttribute name="été"><gen:value>€</gen:value></gen:stringAttribute><bldg:lod1MultiSurface><gml:MultiSurface><gml:surfaceMember><gml:Polygon gml:id="ap"><gml:exterior><gml:LinearRing gml:id="ap-r0"><gml:posList>0 0 0.000000 1 0 0.000000 1 1 0.000000 0 1 0.000000 0 0 0.000000</gml:posList></gml:LinearRing></gml:exterior></gml:Polygon></gml:surfaceMember></gml:MultiSurface></bldg:lod1MultiSurface></bldg:Building></core:cityObjectMember>
</core:CityModel>
