<?xml version="1.0" encoding="UTF-8" standalone="yes"?>
<core:CityModel xmlns="http://www.opengis.net/citygml/3.0" xmlns:gml="http://www.opengis.net/gml/3.2" xmlns:xal="urn:oasis:names:tc:ciq:xal:3" xmlns:xlink="http://www.w3.org/1999/xlink" xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance">
</core:CityModel>
<!-- 3.0 -->
<?xml version="1.0" encoding="UTF-8" standalone="yes"?>
<core:CityModel xmlns="http://www.opengis.net/citygml/3.0" xmlns:app="http://www.opengis.net/citygml/appearance/3.0" xmlns:core="http://www.opengis.net/citygml/3.0" xmlns:frn="http://www.opengis.net/citygml/cityfurniture/3.0" xmlns:gml="http://www.opengis.net/gml/3.2" xmlns:schemaLocation="http://www.opengis.net/citygml/appearance/3.0 http://schemas.opengis.net/citygml/appearance/3.0/appearance.xsd http://www.opengis.net/citygml/3.0 https://schemas.opengis.net/citygml/3.0/core.xsd http://www.opengis.net/citygml/cityfurniture/3.0 http://schemas.opengis.net/citygml/cityfurniture/3.0/cityFurniture.xsd" xmlns:xal="urn:oasis:names:tc:ciq:xal:3" xmlns:xlink="http://www.w3.org/1999/xlink" xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance">
 <core:cityObjectMember>
  <frn:CityFurniture>
  </frn:CityFurniture>
 </core:cityObjectMember>
 <core:cityObjectMember>
  <frn:CityFurniture>
  </frn:CityFurniture>
 </core:cityObjectMember>
 <core:cityObjectMember>
  <frn:CityFurniture>
  </frn:CityFurniture>
 </core:cityObjectMember>
 <core:appearanceMember>
  <app:Appearance>
   <app:surfaceData>
    <app:X3DMaterial>
    <app:ambientIntensity>0.000000</app:ambientIntensity>
    <app:diffuseColor>1 1 1</app:diffuseColor>
    <app:emissiveColor>0 0 0</app:emissiveColor>
    <app:specularColor>0 0 0</app:specularColor>
    <app:shininess>0.000000</app:shininess>
    <app:transparency>0.000000</app:transparency>
    </app:X3DMaterial>
   </app:surfaceData>
  </app:Appearance>
 </core:appearanceMember>
</core:CityModel>
<!-- 2.0 -->
<?xml version="1.0" encoding="UTF-8" standalone="yes"?>
<core:CityModel xmlns="http://www.opengis.net/citygml/2.0" xmlns:app="http://www.opengis.net/citygml/appearance/2.0" xmlns:core="http://www.opengis.net/citygml/2.0" xmlns:frn="http://www.opengis.net/citygml/cityfurniture/2.0" xmlns:gml="http://www.opengis.net/gml" xmlns:schemaLocation="http://www.opengis.net/citygml/appearance/2.0 http://schemas.opengis.net/citygml/appearance/2.0/appearance.xsd http://www.opengis.net/citygml/2.0 https://schemas.opengis.net/citygml/2.0/core.xsd http://www.opengis.net/citygml/cityfurniture/2.0 http://schemas.opengis.net/citygml/cityfurniture/2.0/cityFurniture.xsd" xmlns:xal="urn:oasis:names:tc:ciq:xal:3" xmlns:xlink="http://www.w3.org/1999/xlink" xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance">
 <core:cityObjectMember>
  <frn:CityFurniture>
  </frn:CityFurniture>
 </core:cityObjectMember>
 <core:cityObjectMember>
  <frn:CityFurniture>
  </frn:CityFurniture>
 </core:cityObjectMember>
 <core:cityObjectMember>
  <frn:CityFurniture>
  </frn:CityFurniture>
 </core:cityObjectMember>
 <app:appearanceMember>
  <app:Appearance>
   <app:surfaceDataMember>
    <app:X3DMaterial>
    <app:ambientIntensity>0.000000</app:ambientIntensity>
    <app:diffuseColor>1 1 1</app:diffuseColor>
    <app:emissiveColor>0 0 0</app:emissiveColor>
    <app:specularColor>0 0 0</app:specularColor>
    <app:shininess>0.000000</app:shininess>
    <app:transparency>0.000000</app:transparency>
    </app:X3DMaterial>
   </app:surfaceDataMember>
  </app:Appearance>
 </app:appearanceMember>
</core:CityModel>
