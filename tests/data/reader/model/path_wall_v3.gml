<core:CityModel xmlns:core="http://www.opengis.net/citygml/3.0"
      xmlns:con="http://www.opengis.net/citygml/construction/3.0"
      xmlns:bldg="http://www.opengis.net/citygml/building/3.0"
      xmlns:gml="http://www.opengis.net/gml/3.2"><core:cityObjectMember>
      <bldg:Building gml:id="b"><core:boundary><con:WallSurface gml:id="w">
      <core:lod2MultiSurface><gml:MultiSurface gml:id="m"><gml:surfaceMember><gml:Polygon><gml:exterior><gml:LinearRing><gml:posList>0 0 0 1 0 0 1 1 0 0 1 0 0 0 0</gml:posList></gml:LinearRing></gml:exterior></gml:Polygon></gml:surfaceMember></gml:MultiSurface>
      </core:lod2MultiSurface></con:WallSurface></core:boundary></bldg:Building>
      </core:cityObjectMember></core:CityModel>
