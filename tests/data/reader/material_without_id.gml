<?xml version="1.0" encoding="UTF-8"?>
<core:CityModel xmlns:core="http://www.opengis.net/citygml/2.0"
  xmlns:bldg="http://www.opengis.net/citygml/building/2.0"
  xmlns:app="http://www.opengis.net/citygml/appearance/2.0"
  xmlns:gen="http://www.opengis.net/citygml/generics/2.0"
  xmlns:dem="http://www.opengis.net/citygml/relief/2.0"
  xmlns:gml="http://www.opengis.net/gml" xmlns:xlink="http://www.w3.org/1999/xlink"><core:cityObjectMember><bldg:Building gml:id="b"><bldg:lod2MultiSurface>
      <gml:MultiSurface gml:id="ms"><gml:surfaceMember><gml:Polygon gml:id="p1"><gml:exterior><gml:LinearRing gml:id="r1"><gml:posList>0 0 0 1 0 0 1 1 0 0 1 0 0 0 0</gml:posList></gml:LinearRing></gml:exterior></gml:Polygon></gml:surfaceMember><gml:surfaceMember><gml:Polygon gml:id="p2"><gml:exterior><gml:LinearRing gml:id="r2"><gml:posList>0 0 0 1 0 0 1 1 0 0 1 0 0 0 0</gml:posList></gml:LinearRing></gml:exterior></gml:Polygon></gml:surfaceMember></gml:MultiSurface></bldg:lod2MultiSurface></bldg:Building>
      </core:cityObjectMember><core:appearanceMember><app:Appearance>
      <app:surfaceDataMember><app:X3DMaterial><app:target>#p1</app:target></app:X3DMaterial>
      </app:surfaceDataMember></app:Appearance></core:appearanceMember></core:CityModel>
