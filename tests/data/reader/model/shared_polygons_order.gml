<?xml version="1.0" encoding="UTF-8"?>
<core:CityModel xmlns:core="http://www.opengis.net/citygml/2.0"
  xmlns:bldg="http://www.opengis.net/citygml/building/2.0"
  xmlns:app="http://www.opengis.net/citygml/appearance/2.0"
  xmlns:gen="http://www.opengis.net/citygml/generics/2.0"
  xmlns:dem="http://www.opengis.net/citygml/relief/2.0"
  xmlns:gml="http://www.opengis.net/gml" xmlns:xlink="http://www.w3.org/1999/xlink"><core:cityObjectMember><bldg:Building gml:id="b">
      <bldg:boundedBy><bldg:RoofSurface gml:id="r"><bldg:lod2MultiSurface><gml:MultiSurface><gml:surfaceMember><gml:Polygon gml:id="roof"><gml:exterior><gml:LinearRing><gml:posList>0 0 1 1 0 1 1 1 1</gml:posList></gml:LinearRing></gml:exterior></gml:Polygon></gml:surfaceMember></gml:MultiSurface></bldg:lod2MultiSurface></bldg:RoofSurface></bldg:boundedBy>
      <bldg:boundedBy><bldg:GroundSurface gml:id="g"/></bldg:boundedBy>
      <bldg:lod2Solid><gml:Solid><gml:exterior><gml:CompositeSurface gml:id="cs">
        <gml:surfaceMember xlink:href="#roof"/><gml:surfaceMember><gml:Polygon gml:id="own"><gml:exterior><gml:LinearRing><gml:posList>0 0 0 1 0 0 1 1 0</gml:posList></gml:LinearRing></gml:exterior></gml:Polygon></gml:surfaceMember><gml:surfaceMember xlink:href="#missing"/>
      </gml:CompositeSurface></gml:exterior></gml:Solid></bldg:lod2Solid>
      </bldg:Building></core:cityObjectMember>
      <core:cityObjectMember><bldg:Building gml:id="second"/></core:cityObjectMember>
      <core:appearanceMember><app:Appearance><app:surfaceDataMember><app:X3DMaterial gml:id="m">
      <app:target>#own</app:target></app:X3DMaterial></app:surfaceDataMember>
      <app:surfaceDataMember><app:X3DMaterial gml:id="whole"><app:target>#cs</app:target>
      </app:X3DMaterial></app:surfaceDataMember></app:Appearance>
      </core:appearanceMember></core:CityModel>
