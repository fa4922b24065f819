<core:CityModel xmlns:core="http://www.opengis.net/citygml/3.0"
      xmlns:bldg="http://www.opengis.net/citygml/building/3.0"
      xmlns:app="http://www.opengis.net/citygml/appearance/3.0"
      xmlns:gml="http://www.opengis.net/gml/3.2" xmlns:xlink="http://www.w3.org/1999/xlink">
      <core:cityObjectMember><bldg:Building gml:id="b"><core:appearance><app:Appearance>
      <app:theme>rgb</app:theme><app:surfaceData><app:ParameterizedTexture gml:id="t">
      <app:imageURI>a.png</app:imageURI><app:textureParameterization><app:TextureAssociation>
      <app:target xlink:href="#p1"/><app:textureParameterization><app:TexCoordList>
      <app:textureCoordinates ring="#r1">0 0 1 0 1 1 0 1 0 0</app:textureCoordinates>
      </app:TexCoordList></app:textureParameterization></app:TextureAssociation>
      </app:textureParameterization></app:ParameterizedTexture></app:surfaceData>
      <app:surfaceData><app:X3DMaterial gml:id="m"><app:diffuseColor>0 0.25 1</app:diffuseColor>
      <app:target>#p1</app:target></app:X3DMaterial></app:surfaceData></app:Appearance>
      </core:appearance><core:lod2MultiSurface><gml:MultiSurface><gml:surfaceMember><gml:Polygon gml:id="p1"><gml:exterior><gml:LinearRing gml:id="r1"><gml:posList>0 0 0 1 0 0 1 1 0 0 1 0 0 0 0</gml:posList></gml:LinearRing></gml:exterior></gml:Polygon></gml:surfaceMember></gml:MultiSurface>
      </core:lod2MultiSurface></bldg:Building></core:cityObjectMember></core:CityModel>
