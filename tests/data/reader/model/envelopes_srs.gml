<?xml version="1.0" encoding="UTF-8"?>
<core:CityModel xmlns:core="http://www.opengis.net/citygml/2.0"
  xmlns:bldg="http://www.opengis.net/citygml/building/2.0"
  xmlns:app="http://www.opengis.net/citygml/appearance/2.0"
  xmlns:gen="http://www.opengis.net/citygml/generics/2.0"
  xmlns:dem="http://www.opengis.net/citygml/relief/2.0"
  xmlns:gml="http://www.opengis.net/gml" xmlns:xlink="http://www.w3.org/1999/xlink"><gml:boundedBy><gml:Envelope srsName="EPSG:25832">
      <gml:lowerCorner>1 2 3</gml:lowerCorner><gml:upperCorner>4 5 6</gml:upperCorner>
      </gml:Envelope></gml:boundedBy>
      <core:cityObjectMember><bldg:Building gml:id="a"><gml:boundedBy><gml:Envelope>
      <gml:pos>0 0 0</gml:pos><gml:pos>1 1 1</gml:pos></gml:Envelope></gml:boundedBy>
      <bldg:lod1MultiSurface><gml:MultiSurface srsName="EPSG:4326"/></bldg:lod1MultiSurface>
      </bldg:Building></core:cityObjectMember>
      <core:cityObjectMember><bldg:Building gml:id="c"><gml:boundedBy><gml:Envelope srsName="X">
      <gml:lowerCorner>5 5 5</gml:lowerCorner><gml:upperCorner>1 1 1</gml:upperCorner>
      </gml:Envelope></gml:boundedBy></bldg:Building></core:cityObjectMember></core:CityModel>
