<CityModel xmlns="http://www.opengis.net/citygml/1.0"
      xmlns:gml="http://www.opengis.net/gml"><cityObjectMember>
      <Building xmlns="http://www.opengis.net/citygml/building/1.0"><lod1Solid>
      <gml:Solid><gml:exterior><gml:CompositeSurface><gml:surfaceMember><gml:Polygon><gml:exterior><gml:LinearRing><gml:posList>0 0 0 1 0 0 1 1 0 0 1 0 0 0 0</gml:posList></gml:LinearRing></gml:exterior></gml:Polygon></gml:surfaceMember></gml:CompositeSurface></gml:exterior>
      </gml:Solid></lod1Solid><ADE:Wrapper xmlns:ADE="urn:example:ade"><ADE:Extra>
      <gml:MultiSurface gml:id="ade1"/></ADE:Extra></ADE:Wrapper></Building>
      </cityObjectMember></CityModel>
