<?xml version="1.0" encoding="UTF-8"?>
<core:CityModel xmlns:core="http://www.opengis.net/citygml/2.0"
  xmlns:bldg="http://www.opengis.net/citygml/building/2.0"
  xmlns:app="http://www.opengis.net/citygml/appearance/2.0"
  xmlns:gen="http://www.opengis.net/citygml/generics/2.0"
  xmlns:dem="http://www.opengis.net/citygml/relief/2.0"
  xmlns:gml="http://www.opengis.net/gml" xmlns:xlink="http://www.w3.org/1999/xlink"><core:cityObjectMember><gen:GenericCityObject gml:id="g">
      <gen:lod1Geometry><gml:Polygon gml:id="gp"><gml:exterior><gml:LinearRing><gml:posList>0 0 0 1 0 0 1 1 0 0 1 0 0 0 0</gml:posList></gml:LinearRing></gml:exterior></gml:Polygon></gen:lod1Geometry></gen:GenericCityObject></core:cityObjectMember></core:CityModel>
