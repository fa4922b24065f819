<?xml version="1.0" encoding="UTF-8"?>
<core:CityModel xmlns:core="http://www.opengis.net/citygml/2.0" xmlns:bldg="http://www.opengis.net/citygml/building/2.0" xmlns:gml="http://www.opengis.net/gml">
<gml:Polygon gml:id="loose"><gml:exterior><gml:LinearRing><gml:posList>0 0 0 1 0 0 1 1 0</gml:posList></gml:LinearRing></gml:exterior></gml:Polygon>
<core:cityObjectMember><bldg:Building gml:id="b"><bldg:lod2MultiSurface><gml:MultiSurface>
<gml:surfaceMember><gml:Polygon gml:id="good"><gml:exterior><gml:LinearRing><gml:posList>0 0 0 1 0 0 1 1 0</gml:posList></gml:LinearRing></gml:exterior></gml:Polygon></gml:surfaceMember>
<gml:surfaceMember><gml:Polygon gml:id="short"><gml:exterior><gml:LinearRing><gml:posList>0 0 0 1 0 0 0 0 0</gml:posList></gml:LinearRing></gml:exterior></gml:Polygon></gml:surfaceMember>
<gml:surfaceMember><gml:Polygon><gml:exterior><gml:LinearRing><gml:posList>0 0 0 1 0 0 abc 1 0</gml:posList></gml:LinearRing></gml:exterior></gml:Polygon></gml:surfaceMember>
<gml:surfaceMember><gml:Polygon gml:id="big"><gml:exterior><gml:LinearRing><gml:posList>0 0 0 1e309 0 0 1 1 0</gml:posList></gml:LinearRing></gml:exterior></gml:Polygon></gml:surfaceMember>
<gml:surfaceMember><gml:Polygon gml:id="nan"><gml:exterior><gml:LinearRing><gml:pos>0 0 0</gml:pos><gml:pos>nan 0 0</gml:pos><gml:pos>1 1 0</gml:pos></gml:LinearRing></gml:exterior></gml:Polygon></gml:surfaceMember>
<gml:surfaceMember><gml:Polygon gml:id="inf"><gml:exterior><gml:LinearRing><gml:coordinates>0,0,0 -inf,0,0 1,1,0</gml:coordinates></gml:LinearRing></gml:exterior></gml:Polygon></gml:surfaceMember>
<gml:surfaceMember><gml:Polygon gml:id="odd"><gml:exterior><gml:LinearRing><gml:posList>0 0 0 1 0 0 1 1</gml:posList></gml:LinearRing></gml:exterior></gml:Polygon></gml:surfaceMember>
<gml:surfaceMember><gml:Polygon gml:id="none"><gml:interior><gml:LinearRing><gml:posList>0 0 0 1 0 0 1 1 0</gml:posList></gml:LinearRing></gml:interior></gml:Polygon></gml:surfaceMember>
<gml:surfaceMember><gml:Polygon gml:id="holes"><gml:exterior><gml:LinearRing><gml:posList>0 0 0 4 0 0 4 4 0</gml:posList></gml:LinearRing></gml:exterior>
<gml:interior><gml:LinearRing gml:id="r7"><gml:posList>1 1 0 2 1 0</gml:posList></gml:LinearRing></gml:interior>
<gml:interior><gml:LinearRing><gml:pos>1 1 0 0</gml:pos></gml:LinearRing></gml:interior>
<gml:exterior><gml:LinearRing gml:id="again"><gml:posList>0 0 0 4 0 0 4 4 0</gml:posList></gml:LinearRing></gml:exterior>
<gml:interior><gml:LinearRing><gml:coordinates>1,1,0 2,1 2,2,0</gml:coordinates></gml:LinearRing></gml:interior></gml:Polygon></gml:surfaceMember>
<gml:surfaceMember><gml:Polygon
  gml:id="wrapped"><gml:exterior><gml:LinearRing><gml:posList>
  0 0 0 1 0 0</gml:posList></gml:LinearRing></gml:exterior><gml:Polygon gml:id="inner"/></gml:Polygon></gml:surfaceMember>
</gml:MultiSurface></bldg:lod2MultiSurface>
<bldg:lod2ImplicitRepresentation><core:ImplicitGeometry/></bldg:lod2ImplicitRepresentation>
</bldg:Building></core:cityObjectMember>
<gml:MultiSurface gml:id="stray"/>
</core:CityModel>
