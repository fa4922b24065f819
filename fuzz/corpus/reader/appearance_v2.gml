<?xml version="1.0"?>
<CityModel xmlns="http://www.opengis.net/citygml/2.0" xmlns:app="http://www.opengis.net/citygml/appearance/2.0" xmlns:frn="http://www.opengis.net/citygml/cityfurniture/2.0" xmlns:gml="http://www.opengis.net/gml">
<cityObjectMember><frn:CityFurniture gml:id="f1"><frn:lod2Geometry><gml:MultiSurface gml:id="g1"><gml:surfaceMember><gml:Polygon gml:id="q1"><gml:exterior><gml:LinearRing gml:id="q1r"><gml:posList>0 0 0 2 0 0 2 2 0</gml:posList></gml:LinearRing></gml:exterior></gml:Polygon></gml:surfaceMember></gml:MultiSurface></frn:lod2Geometry></frn:CityFurniture></cityObjectMember>
<appearanceMember><app:Appearance><app:theme>summer</app:theme>
<app:surfaceDataMember><app:X3DMaterial gml:id="m1"><app:isFront>false</app:isFront><app:diffuseColor>0.5 0.25 1</app:diffuseColor><app:transparency>0.25</app:transparency><app:target>#g1</app:target></app:X3DMaterial></app:surfaceDataMember>
<app:surfaceDataMember><app:ParameterizedTexture gml:id="t1"><app:imageURI>img/a.jpg</app:imageURI><app:target uri="#q1"><app:TexCoordList><app:textureCoordinates ring="#q1r">0 0 1 0 1 1 0 0</app:textureCoordinates></app:TexCoordList></app:target></app:ParameterizedTexture></app:surfaceDataMember>
</app:Appearance></appearanceMember></CityModel>
