<?xml version="1.0" encoding="UTF-8" standalone="yes"?>
<core:CityModel xmlns="http://www.opengis.net/citygml/3.0" xmlns:con="http://www.opengis.net/citygml/construction/3.0" xmlns:core="http://www.opengis.net/citygml/3.0" xmlns:gen="http://www.opengis.net/citygml/generics/3.0" xmlns:gml="http://www.opengis.net/gml/3.2" xmlns:schemaLocation="http://www.opengis.net/citygml/construction/3.0 http://schemas.opengis.net/citygml/construction/3.0/construction.xsd http://www.opengis.net/citygml/3.0 https://schemas.opengis.net/citygml/3.0/core.xsd http://www.opengis.net/citygml/generics/3.0 http://schemas.opengis.net/citygml/generics/3.0/generics.xsd" xmlns:xal="urn:oasis:names:tc:ciq:xal:3" xmlns:xlink="http://www.w3.org/1999/xlink" xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance">
 <core:cityObjectMember>
  <con:OtherConstruction>
  <gml:boundedBy>
   <gml:Envelope srsName="EPSG:25832" srsDimension="3">
    <gml:lowerCorner>1.00000 -4.00000 2.00000 </gml:lowerCorner>
    <gml:upperCorner>2.00000 -3.00000 2.00000 </gml:upperCorner>
   </gml:Envelope>
  </gml:boundedBy>
   <core:boundary>
    <gen:GenericThematicSurface>
     <core:lod0MultiSurface>
      <gml:MultiSurface>
       <gml:surfaceMember>
        <gml:Polygon gml:id="ID_poly0">
         <gml:exterior>
          <gml:LinearRing gml:id="ID_poly0.ID">
          <gml:posList srsDimension="3">
          1.00000 -3.00000 2.00000 2.00000 -3.00000 2.00000 2.00000 -4.00000 2.00000 1.00000 -4.00000 2.00000 1.00000 -3.00000 2.00000 </gml:posList>
          </gml:LinearRing>
         </gml:exterior>
        </gml:Polygon>
       </gml:surfaceMember>
      </gml:MultiSurface>
     </core:lod0MultiSurface>
    </gen:GenericThematicSurface>
   </core:boundary>
  </con:OtherConstruction>
 </core:cityObjectMember>
</core:CityModel>
