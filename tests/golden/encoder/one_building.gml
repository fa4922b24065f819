<?xml version="1.0" encoding="UTF-8" standalone="yes"?>
<core:CityModel xmlns="http://www.opengis.net/citygml/2.0" xmlns:bldg="http://www.opengis.net/citygml/building/2.0" xmlns:core="http://www.opengis.net/citygml/2.0" xmlns:gml="http://www.opengis.net/gml" xmlns:schemaLocation="http://www.opengis.net/citygml/building/2.0 http://schemas.opengis.net/citygml/building/2.0/building.xsd http://www.opengis.net/citygml/2.0 https://schemas.opengis.net/citygml/2.0/core.xsd" xmlns:xal="urn:oasis:names:tc:ciq:xal:3" xmlns:xlink="http://www.w3.org/1999/xlink" xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance">
 <core:cityObjectMember>
  <bldg:Building>
  <gml:boundedBy>
   <gml:Envelope srsDimension="3">
    <gml:lowerCorner>1.000 -4.000 2.000 </gml:lowerCorner>
    <gml:upperCorner>2.000 -3.000 2.000 </gml:upperCorner>
   </gml:Envelope>
  </gml:boundedBy>
   <bldg:lod2MultiSurface>
    <gml:MultiSurface gml:id="ms1">
     <gml:surfaceMember>
      <gml:Polygon gml:id="ID_poly0">
       <gml:exterior>
        <gml:LinearRing gml:id="ID_poly0.ID">
        <gml:posList srsDimension="3">
        1.000 -3.000 2.000 2.000 -3.000 2.000 2.000 -4.000 2.000 1.000 -4.000 2.000 1.000 -3.000 2.000 </gml:posList>
        </gml:LinearRing>
       </gml:exterior>
      </gml:Polygon>
     </gml:surfaceMember>
    </gml:MultiSurface>
   </bldg:lod2MultiSurface>
  </bldg:Building>
 </core:cityObjectMember>
</core:CityModel>
