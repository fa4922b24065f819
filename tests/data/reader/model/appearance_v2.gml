<?xml version="1.0" encoding="UTF-8"?>
<core:CityModel xmlns:core="http://www.opengis.net/citygml/2.0"
  xmlns:bldg="http://www.opengis.net/citygml/building/2.0"
  xmlns:app="http://www.opengis.net/citygml/appearance/2.0"
  xmlns:gen="http://www.opengis.net/citygml/generics/2.0"
  xmlns:dem="http://www.opengis.net/citygml/relief/2.0"
  xmlns:gml="http://www.opengis.net/gml" xmlns:xlink="http://www.w3.org/1999/xlink"><core:cityObjectMember><bldg:Building gml:id="b"><bldg:lod2MultiSurface>
      <gml:MultiSurface gml:id="ms"><gml:surfaceMember><gml:Polygon gml:id="p1"><gml:exterior><gml:LinearRing gml:id="r1"><gml:posList>0 0 0 1 0 0 1 1 0 0 1 0 0 0 0</gml:posList></gml:LinearRing></gml:exterior></gml:Polygon></gml:surfaceMember><gml:surfaceMember><gml:Polygon gml:id="p2"><gml:exterior><gml:LinearRing gml:id="r2"><gml:posList>0 0 0 1 0 0 1 1 0 0 1 0 0 0 0</gml:posList></gml:LinearRing></gml:exterior></gml:Polygon></gml:surfaceMember></gml:MultiSurface></bldg:lod2MultiSurface></bldg:Building>
      </core:cityObjectMember><core:appearanceMember><app:Appearance>
      <app:theme>summer</app:theme>
      <app:surfaceDataMember><app:ParameterizedTexture gml:id="tex">
        <app:imageURI>images/wall.jpg</app:imageURI><app:mimeType>image/jpeg</app:mimeType>
        <app:target uri="#p1"><app:TexCoordList>
          <app:textureCoordinates ring="#r1">0 0 1 0 1 1 0 1 0 0</app:textureCoordinates>
        </app:TexCoordList></app:target>
      </app:ParameterizedTexture></app:surfaceDataMember>
      <app:surfaceDataMember><app:X3DMaterial gml:id="red">
        <app:ambientIntensity>0.4</app:ambientIntensity><app:diffuseColor>1 0 0</app:diffuseColor>
        <app:emissiveColor>0 0.5 0</app:emissiveColor><app:specularColor>0 0 1</app:specularColor>
        <app:shininess>0.7</app:shininess><app:transparency>0.25</app:transparency>
        <app:target>#ms</app:target></app:X3DMaterial></app:surfaceDataMember>
      <app:surfaceDataMember><app:X3DMaterial gml:id="inside"><app:isFront>false</app:isFront>
        <app:target>#p2</app:target></app:X3DMaterial></app:surfaceDataMember>
      </app:Appearance></core:appearanceMember>
      <core:appearanceMember><app:Appearance><app:theme>winter</app:theme>
      <app:surfaceDataMember xlink:href="#tex"/></app:Appearance></core:appearanceMember></core:CityModel>
