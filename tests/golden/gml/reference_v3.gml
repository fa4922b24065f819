<?xml version="1.0" encoding="UTF-8" standalone="yes"?>
<core:CityModel xmlns="http://www.opengis.net/citygml/3.0" xmlns:app="http://www.opengis.net/citygml/appearance/3.0" xmlns:bldg="http://www.opengis.net/citygml/building/3.0" xmlns:con="http://www.opengis.net/citygml/construction/3.0" xmlns:core="http://www.opengis.net/citygml/3.0" xmlns:dem="http://www.opengis.net/citygml/relief/3.0" xmlns:gen="http://www.opengis.net/citygml/generics/3.0" xmlns:gml="http://www.opengis.net/gml/3.2" xmlns:schemaLocation="http://www.opengis.net/citygml/appearance/3.0 http://schemas.opengis.net/citygml/appearance/3.0/appearance.xsd http://www.opengis.net/citygml/building/3.0 http://schemas.opengis.net/citygml/building/3.0/building.xsd http://www.opengis.net/citygml/construction/3.0 http://schemas.opengis.net/citygml/construction/3.0/construction.xsd http://www.opengis.net/citygml/3.0 https://schemas.opengis.net/citygml/3.0/core.xsd http://www.opengis.net/citygml/relief/3.0 http://schemas.opengis.net/citygml/relief/3.0/relief.xsd http://www.opengis.net/citygml/generics/3.0 http://schemas.opengis.net/citygml/generics/3.0/generics.xsd" xmlns:xal="urn:oasis:names:tc:ciq:xal:3" xmlns:xlink="http://www.w3.org/1999/xlink" xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance">
 <core:cityObjectMember>
  <bldg:Building>
  <gml:boundedBy>
   <gml:Envelope srsName="EPSG:25832" srsDimension="3">
    <gml:lowerCorner>0.000 -0.000 0.000 </gml:lowerCorner>
    <gml:upperCorner>10.000 10.000 10.000 </gml:upperCorner>
   </gml:Envelope>
  </gml:boundedBy>
   <core:genericAttribute>
    <gen:IntAttribute>
    <gen:name>Floors</gen:name>
    <gen:value>3</gen:value>
    </gen:IntAttribute>
   </core:genericAttribute>
   <core:genericAttribute>
    <gen:DoubleAttribute>
    <gen:name>Height</gen:name>
    <gen:value>12.500000</gen:value>
    </gen:DoubleAttribute>
   </core:genericAttribute>
   <core:genericAttribute>
    <gen:StringAttribute>
    <gen:name>Name</gen:name>
    <gen:value>Tower é</gen:value>
    </gen:StringAttribute>
   </core:genericAttribute>
   <core:boundary>
    <con:WallSurface>
     <core:lod2MultiSurface>
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
     </core:lod2MultiSurface>
    </con:WallSurface>
   </core:boundary>
   <core:boundary>
    <con:RoofSurface>
     <core:lod2MultiSurface>
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
     </core:lod2MultiSurface>
    </con:RoofSurface>
   </core:boundary>
   <core:lod2Solid>
    <gml:Solid gml:id="n2">
     <gml:exterior>
      <gml:Shell gml:id="n3">
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
      </gml:Shell>
     </gml:exterior>
    </gml:Solid>
   </core:lod2Solid>
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
       <gml:patches>
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
       </gml:patches>
      </gml:TriangulatedSurface>
     </dem:tin>
    </dem:TINRelief>
   </dem:reliefComponent>
  </dem:ReliefFeature>
 </core:cityObjectMember>
 <core:cityObjectMember>
  <gen:GenericOccupiedSpace>
  <gml:boundedBy>
   <gml:Envelope srsName="EPSG:25832" srsDimension="3">
    <gml:lowerCorner>0.000 -0.000 0.000 </gml:lowerCorner>
    <gml:upperCorner>10.000 10.000 10.000 </gml:upperCorner>
   </gml:Envelope>
  </gml:boundedBy>
   <core:genericAttribute>
    <gen:IntAttribute>
    <gen:name>count</gen:name>
    <gen:value>-4</gen:value>
    </gen:IntAttribute>
   </core:genericAttribute>
   <core:genericAttribute>
    <gen:StringAttribute>
    <gen:name>label</gen:name>
    <gen:value>a b</gen:value>
    </gen:StringAttribute>
   </core:genericAttribute>
   <core:genericAttribute>
    <gen:DoubleAttribute>
    <gen:name>ratio</gen:name>
    <gen:value>0.500000</gen:value>
    </gen:DoubleAttribute>
   </core:genericAttribute>
   <core:lod2MultiSurface>
    <gml:MultiSurface gml:id="n27">
     <gml:surfaceMember>
      <gml:Surface gml:id="n28">
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
     </gml:surfaceMember>
    </gml:MultiSurface>
   </core:lod2MultiSurface>
  </gen:GenericOccupiedSpace>
 </core:cityObjectMember>
 <core:appearanceMember>
  <app:Appearance>
   <app:surfaceData>
    <app:ParameterizedTexture>
    <app:imageURI>wall.png</app:imageURI>
    <app:wrapMode>wrap</app:wrapMode>
     <app:textureParameterization>
      <app:TextureAssociation>
      <app:target>n12_poly0</app:target>
       <app:textureParameterization>
        <app:TexCoordList>
        <app:textureCoordinates>
        0.000 0.000 1.000 0.000 1.000 1.000 0.000 1.000 0.000 0.000 </app:textureCoordinates>
        <app:ring>n12_poly0.ID</app:ring>
        </app:TexCoordList>
       </app:textureParameterization>
      </app:TextureAssociation>
     </app:textureParameterization>
     <app:textureParameterization>
      <app:TextureAssociation>
      <app:target></app:target>
       <app:textureParameterization>
        <app:TexCoordList>
        <app:textureCoordinates>
        0.000 0.000 1.000 0.000 1.000 1.000 0.000 0.000 </app:textureCoordinates>
        <app:ring>ID</app:ring>
        </app:TexCoordList>
       </app:textureParameterization>
      </app:TextureAssociation>
     </app:textureParameterization>
    </app:ParameterizedTexture>
   </app:surfaceData>
   <app:surfaceData>
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
   </app:surfaceData>
  </app:Appearance>
 </core:appearanceMember>
</core:CityModel>
