<?xml version="1.0" encoding="UTF-8" standalone="yes"?>
<core:CityModel xmlns="http://www.opengis.net/citygml/2.0" xmlns:app="http://www.opengis.net/citygml/appearance/2.0" xmlns:bldg="http://www.opengis.net/citygml/building/2.0" xmlns:core="http://www.opengis.net/citygml/2.0" xmlns:dem="http://www.opengis.net/citygml/relief/2.0" xmlns:gen="http://www.opengis.net/citygml/generics/2.0" xmlns:gml="http://www.opengis.net/gml" xmlns:schemaLocation="http://www.opengis.net/citygml/appearance/2.0 http://schemas.opengis.net/citygml/appearance/2.0/appearance.xsd http://www.opengis.net/citygml/building/2.0 http://schemas.opengis.net/citygml/building/2.0/building.xsd http://www.opengis.net/citygml/2.0 https://schemas.opengis.net/citygml/2.0/core.xsd http://www.opengis.net/citygml/relief/2.0 http://schemas.opengis.net/citygml/relief/2.0/relief.xsd http://www.opengis.net/citygml/generics/2.0 http://schemas.opengis.net/citygml/generics/2.0/generics.xsd" xmlns:xal="urn:oasis:names:tc:ciq:xal:3" xmlns:xlink="http://www.w3.org/1999/xlink" xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance">
 <core:cityObjectMember>
  <bldg:Building>
  <gml:boundedBy>
   <gml:Envelope srsName="EPSG:25832" srsDimension="3">
    <gml:lowerCorner>0.000 -0.000 0.000 </gml:lowerCorner>
    <gml:upperCorner>10.000 10.000 10.000 </gml:upperCorner>
   </gml:Envelope>
  </gml:boundedBy>
   <gen:intAttribute name="Floors">
   <gen:value>3</gen:value>
   </gen:intAttribute>
   <gen:doubleAttribute name="Height">
   <gen:value>12.500000</gen:value>
   </gen:doubleAttribute>
   <gen:stringAttribute name="Name">
   <gen:value>Tower é</gen:value>
   </gen:stringAttribute>
  <bldg:storeysAboveGround>3</bldg:storeysAboveGround>
   <bldg:lod2Solid>
    <gml:Solid gml:id="n2">
     <gml:exterior>
      <gml:CompositeSurface gml:id="n3">
       <gml:surfaceMember>
        <gml:Polygon gml:id="n4_poly0">
         <gml:exterior>
          <gml:LinearRing gml:id="n4_poly0.ID">
          <gml:posList srsDimension="3">
          0.000 -0.000 0.000 0.000 1.000 0.000 1.000 -0.000 0.000 0.000 -0.000 0.000 </gml:posList>
          </gml:LinearRing>
         </gml:exterior>
        </gml:Polygon>
       </gml:surfaceMember>
       <gml:surfaceMember>
        <gml:Polygon gml:id="n5_poly1">
         <gml:exterior>
          <gml:LinearRing gml:id="n5_poly1.ID">
          <gml:posList srsDimension="3">
          0.000 -0.000 0.000 1.000 -0.000 0.000 0.000 -0.000 1.000 0.000 -0.000 0.000 </gml:posList>
          </gml:LinearRing>
         </gml:exterior>
        </gml:Polygon>
       </gml:surfaceMember>
       <gml:surfaceMember>
        <gml:Polygon gml:id="n6_poly2">
         <gml:exterior>
          <gml:LinearRing gml:id="n6_poly2.ID">
          <gml:posList srsDimension="3">
          1.000 -0.000 0.000 0.000 1.000 0.000 0.000 -0.000 1.000 1.000 -0.000 0.000 </gml:posList>
          </gml:LinearRing>
         </gml:exterior>
        </gml:Polygon>
       </gml:surfaceMember>
       <gml:surfaceMember>
        <gml:Polygon gml:id="n7_poly3">
         <gml:exterior>
          <gml:LinearRing gml:id="n7_poly3.ID">
          <gml:posList srsDimension="3">
          0.000 -0.000 0.000 0.000 -0.000 1.000 0.000 1.000 0.000 0.000 -0.000 0.000 </gml:posList>
          </gml:LinearRing>
         </gml:exterior>
        </gml:Polygon>
       </gml:surfaceMember>
      </gml:CompositeSurface>
     </gml:exterior>
    </gml:Solid>
   </bldg:lod2Solid>
   <bldg:boundedBy>
    <bldg:WallSurface>
     <bldg:lod2MultiSurface>
      <gml:MultiSurface gml:id="n11">
       <gml:surfaceMember>
        <gml:Polygon gml:id="n12_poly0">
         <gml:exterior>
          <gml:LinearRing gml:id="n12_poly0.ID">
          <gml:posList srsDimension="3">
          0.000 -0.000 0.000 10.000 -0.000 0.000 10.000 -0.000 10.000 0.000 -0.000 10.000 0.000 -0.000 0.000 </gml:posList>
          </gml:LinearRing>
         </gml:exterior>
        </gml:Polygon>
       </gml:surfaceMember>
      </gml:MultiSurface>
     </bldg:lod2MultiSurface>
    </bldg:WallSurface>
   </bldg:boundedBy>
   <bldg:boundedBy>
    <bldg:RoofSurface>
     <bldg:lod2MultiSurface>
      <gml:MultiSurface gml:id="n15">
       <gml:surfaceMember>
        <gml:OrientableSurface>
         <gml:baseSurface>
          <gml:Polygon gml:id="n18_poly0">
           <gml:exterior>
            <gml:LinearRing gml:id="n18_poly0.ID">
            <gml:posList srsDimension="3">
            0.000 -0.000 10.000 10.000 -0.000 10.000 10.000 10.000 10.000 0.000 10.000 10.000 0.000 -0.000 10.000 </gml:posList>
            </gml:LinearRing>
           </gml:exterior>
          </gml:Polygon>
         </gml:baseSurface>
        </gml:OrientableSurface>
       </gml:surfaceMember>
       <gml:surfaceMember>
        <gml:OrientableSurface>
         <gml:baseSurface>
          <gml:Polygon gml:id="n19_poly1">
           <gml:exterior>
            <gml:LinearRing gml:id="n19_poly1.ID">
            <gml:posList srsDimension="3">
            0.000 -0.000 10.000 10.000 10.000 10.000 0.000 10.000 10.000 0.000 -0.000 10.000 </gml:posList>
            </gml:LinearRing>
           </gml:exterior>
          </gml:Polygon>
         </gml:baseSurface>
        </gml:OrientableSurface>
       </gml:surfaceMember>
      </gml:MultiSurface>
     </bldg:lod2MultiSurface>
    </bldg:RoofSurface>
   </bldg:boundedBy>
  </bldg:Building>
 </core:cityObjectMember>
 <core:cityObjectMember>
  <dem:ReliefFeature>
  <dem:lod>0</dem:lod>
   <dem:reliefComponent>
    <dem:TINRelief>
    <dem:lod>0</dem:lod>
     <dem:tin>
      <gml:TriangulatedSurface gml:id="n23">
       <gml:trianglePatches>
        <gml:Triangle>
         <gml:exterior>
          <gml:LinearRing gml:id="ID">
          <gml:posList srsDimension="3">
          0.000 -0.000 0.000 10.000 -0.000 0.000 10.000 10.000 0.000 0.000 -0.000 0.000 </gml:posList>
          </gml:LinearRing>
         </gml:exterior>
        </gml:Triangle>
        <gml:Triangle>
         <gml:exterior>
          <gml:LinearRing gml:id="ID">
          <gml:posList srsDimension="3">
          0.000 -0.000 0.000 10.000 10.000 0.000 0.000 10.000 0.000 0.000 -0.000 0.000 </gml:posList>
          </gml:LinearRing>
         </gml:exterior>
        </gml:Triangle>
       </gml:trianglePatches>
      </gml:TriangulatedSurface>
     </dem:tin>
    </dem:TINRelief>
   </dem:reliefComponent>
  </dem:ReliefFeature>
 </core:cityObjectMember>
 <core:cityObjectMember>
  <gen:GenericCityObject>
  <gml:boundedBy>
   <gml:Envelope srsName="EPSG:25832" srsDimension="3">
    <gml:lowerCorner>0.000 -0.000 0.000 </gml:lowerCorner>
    <gml:upperCorner>10.000 10.000 10.000 </gml:upperCorner>
   </gml:Envelope>
  </gml:boundedBy>
   <gen:intAttribute name="count">
   <gen:value>-4</gen:value>
   </gen:intAttribute>
   <gen:stringAttribute name="label">
   <gen:value>a b</gen:value>
   </gen:stringAttribute>
   <gen:doubleAttribute name="ratio">
   <gen:value>0.500000</gen:value>
   </gen:doubleAttribute>
   <gen:lod2Geometry>
    <gml:Surface gml:id="n27">
     <gml:patches>
      <gml:PolygonPatch>
       <gml:exterior>
        <gml:LinearRing gml:id="ID">
        <gml:posList srsDimension="3">
        0.000 -0.000 0.000 1.000 -0.000 0.000 1.000 -0.000 1.000 0.000 -0.000 0.000 </gml:posList>
        </gml:LinearRing>
       </gml:exterior>
      </gml:PolygonPatch>
     </gml:patches>
    </gml:Surface>
   </gen:lod2Geometry>
  </gen:GenericCityObject>
 </core:cityObjectMember>
 <app:appearanceMember>
  <app:Appearance>
   <app:surfaceDataMember>
    <app:ParameterizedTexture>
    <app:imageURI>wall.png</app:imageURI>
    <app:wrapMode>wrap</app:wrapMode>
     <app:target uri="n12_poly0">
      <app:TexCoordList>
      <app:textureCoordinates ring="n12_poly0.ID">
      0.000 0.000 1.000 0.000 1.000 1.000 0.000 1.000 0.000 0.000 </app:textureCoordinates>
      </app:TexCoordList>
     </app:target>
     <app:target uri="">
      <app:TexCoordList>
      <app:textureCoordinates ring="ID">
      0.000 0.000 1.000 0.000 1.000 1.000 0.000 0.000 </app:textureCoordinates>
      </app:TexCoordList>
     </app:target>
    </app:ParameterizedTexture>
   </app:surfaceDataMember>
   <app:surfaceDataMember>
    <app:X3DMaterial>
    <app:ambientIntensity>0.370192</app:ambientIntensity>
    <app:diffuseColor>0.8 0.2 0.2</app:diffuseColor>
    <app:emissiveColor>0 0 0</app:emissiveColor>
    <app:specularColor>0 0 0</app:specularColor>
    <app:shininess>0.250000</app:shininess>
    <app:transparency>0.500000</app:transparency>
    <app:target></app:target>
    <app:target>n18_poly0</app:target>
    <app:target>n19_poly1</app:target>
    </app:X3DMaterial>
   </app:surfaceDataMember>
  </app:Appearance>
 </app:appearanceMember>
</core:CityModel>
