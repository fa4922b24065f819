<?xml version="1.0" encoding="UTF-8"?>
<!-- A small gabled house with a garage, made for the gmlcodec demo. -->
<core:CityModel xmlns:core="http://www.opengis.net/citygml/2.0"
    xmlns:bldg="http://www.opengis.net/citygml/building/2.0"
    xmlns:app="http://www.opengis.net/citygml/appearance/2.0"
    xmlns:gen="http://www.opengis.net/citygml/generics/2.0"
    xmlns:gml="http://www.opengis.net/gml"
    xmlns:xlink="http://www.w3.org/1999/xlink">
  <gml:name>Small house example</gml:name>
  <core:cityObjectMember>
    <bldg:Building gml:id="house">
      <gml:name>Small house</gml:name>
      <gml:boundedBy>
        <gml:Envelope srsName="EPSG:25832" srsDimension="3">
          <gml:lowerCorner>0 0 0</gml:lowerCorner>
          <gml:upperCorner>14 8 9</gml:upperCorner>
        </gml:Envelope>
      </gml:boundedBy>
      <gen:stringAttribute name="owner">
        <gen:value>Town of Example</gen:value>
      </gen:stringAttribute>
      <gen:intAttribute name="storeys">
        <gen:value>2</gen:value>
      </gen:intAttribute>
      <gen:doubleAttribute name="eavesHeight">
        <gen:value>6.0</gen:value>
      </gen:doubleAttribute>
      <bldg:measuredHeight uom="m">9.0</bldg:measuredHeight>
      <bldg:boundedBy>
        <bldg:GroundSurface gml:id="ground">
          <bldg:lod2MultiSurface>
            <gml:MultiSurface>
              <gml:surfaceMember>
                <gml:Polygon gml:id="ground-poly">
                  <gml:exterior><gml:LinearRing>
                    <gml:posList>0 0 0 0 8 0 10 8 0 10 0 0 0 0 0</gml:posList>
                  </gml:LinearRing></gml:exterior>
                </gml:Polygon>
              </gml:surfaceMember>
            </gml:MultiSurface>
          </bldg:lod2MultiSurface>
        </bldg:GroundSurface>
      </bldg:boundedBy>
      <bldg:boundedBy>
        <bldg:WallSurface gml:id="wall-south">
          <bldg:lod2MultiSurface>
            <gml:MultiSurface>
              <gml:surfaceMember>
                <gml:Polygon gml:id="wall-south-poly">
                  <gml:exterior><gml:LinearRing gml:id="wall-south-outer">
                    <gml:posList>0 0 0 10 0 0 10 0 6 0 0 6 0 0 0</gml:posList>
                  </gml:LinearRing></gml:exterior>
                  <gml:interior><gml:LinearRing gml:id="wall-south-window">
                    <gml:posList>3 0 2 3 0 4 5 0 4 5 0 2 3 0 2</gml:posList>
                  </gml:LinearRing></gml:interior>
                </gml:Polygon>
              </gml:surfaceMember>
            </gml:MultiSurface>
          </bldg:lod2MultiSurface>
        </bldg:WallSurface>
      </bldg:boundedBy>
      <bldg:boundedBy>
        <bldg:WallSurface gml:id="wall-gables">
          <bldg:lod2MultiSurface>
            <gml:MultiSurface>
              <gml:surfaceMember>
                <gml:Polygon gml:id="wall-east-poly">
                  <gml:exterior><gml:LinearRing>
                    <gml:posList>10 0 0 10 8 0 10 8 6 10 4 9 10 0 6 10 0 0</gml:posList>
                  </gml:LinearRing></gml:exterior>
                </gml:Polygon>
              </gml:surfaceMember>
              <gml:surfaceMember>
                <gml:Polygon gml:id="wall-north-poly">
                  <gml:exterior><gml:LinearRing>
                    <gml:posList>10 8 0 0 8 0 0 8 6 10 8 6 10 8 0</gml:posList>
                  </gml:LinearRing></gml:exterior>
                </gml:Polygon>
              </gml:surfaceMember>
              <gml:surfaceMember>
                <gml:Polygon gml:id="wall-west-poly">
                  <gml:exterior><gml:LinearRing>
                    <gml:posList>0 8 0 0 0 0 0 0 6 0 4 9 0 8 6 0 8 0</gml:posList>
                  </gml:LinearRing></gml:exterior>
                </gml:Polygon>
              </gml:surfaceMember>
            </gml:MultiSurface>
          </bldg:lod2MultiSurface>
        </bldg:WallSurface>
      </bldg:boundedBy>
      <bldg:boundedBy>
        <bldg:RoofSurface gml:id="roof">
          <bldg:lod2MultiSurface>
            <gml:MultiSurface>
              <gml:surfaceMember>
                <gml:Polygon gml:id="roof-south-poly">
                  <gml:exterior><gml:LinearRing>
                    <gml:posList>0 0 6 10 0 6 10 4 9 0 4 9 0 0 6</gml:posList>
                  </gml:LinearRing></gml:exterior>
                </gml:Polygon>
              </gml:surfaceMember>
              <gml:surfaceMember>
                <gml:Polygon gml:id="roof-north-poly">
                  <gml:exterior><gml:LinearRing>
                    <gml:posList>10 8 6 0 8 6 0 4 9 10 4 9 10 8 6</gml:posList>
                  </gml:LinearRing></gml:exterior>
                </gml:Polygon>
              </gml:surfaceMember>
            </gml:MultiSurface>
          </bldg:lod2MultiSurface>
        </bldg:RoofSurface>
      </bldg:boundedBy>
      <bldg:consistsOfBuildingPart>
        <bldg:BuildingPart gml:id="garage">
          <bldg:function>garage</bldg:function>
          <bldg:lod2Solid>
            <gml:Solid gml:id="garage-solid">
              <gml:exterior>
                <gml:CompositeSurface>
                  <gml:surfaceMember><gml:Polygon gml:id="garage-bottom"><gml:exterior><gml:LinearRing>
                    <gml:posList>10 1 0 10 5 0 14 5 0 14 1 0 10 1 0</gml:posList>
                  </gml:LinearRing></gml:exterior></gml:Polygon></gml:surfaceMember>
                  <gml:surfaceMember><gml:Polygon gml:id="garage-top"><gml:exterior><gml:LinearRing>
                    <gml:posList>10 1 3 14 1 3 14 5 3 10 5 3 10 1 3</gml:posList>
                  </gml:LinearRing></gml:exterior></gml:Polygon></gml:surfaceMember>
                  <gml:surfaceMember><gml:Polygon gml:id="garage-south"><gml:exterior><gml:LinearRing>
                    <gml:posList>10 1 0 14 1 0 14 1 3 10 1 3 10 1 0</gml:posList>
                  </gml:LinearRing></gml:exterior></gml:Polygon></gml:surfaceMember>
                  <gml:surfaceMember><gml:Polygon gml:id="garage-east"><gml:exterior><gml:LinearRing>
                    <gml:posList>14 1 0 14 5 0 14 5 3 14 1 3 14 1 0</gml:posList>
                  </gml:LinearRing></gml:exterior></gml:Polygon></gml:surfaceMember>
                  <gml:surfaceMember><gml:Polygon gml:id="garage-north"><gml:exterior><gml:LinearRing>
                    <gml:posList>14 5 0 10 5 0 10 5 3 14 5 3 14 5 0</gml:posList>
                  </gml:LinearRing></gml:exterior></gml:Polygon></gml:surfaceMember>
                  <gml:surfaceMember><gml:Polygon gml:id="garage-west"><gml:exterior><gml:LinearRing>
                    <gml:posList>10 5 0 10 1 0 10 1 3 10 5 3 10 5 0</gml:posList>
                  </gml:LinearRing></gml:exterior></gml:Polygon></gml:surfaceMember>
                </gml:CompositeSurface>
              </gml:exterior>
            </gml:Solid>
          </bldg:lod2Solid>
        </bldg:BuildingPart>
      </bldg:consistsOfBuildingPart>
    </bldg:Building>
  </core:cityObjectMember>
  <app:appearanceMember>
    <app:Appearance>
      <app:theme>rgbTexture</app:theme>
      <app:surfaceDataMember>
        <app:ParameterizedTexture gml:id="facade-texture">
          <app:imageURI>facade.png</app:imageURI>
          <app:mimeType>image/png</app:mimeType>
          <app:target uri="#wall-south-poly">
            <app:TexCoordList>
              <app:textureCoordinates ring="#wall-south-outer">0 0 1 0 1 1 0 1 0 0</app:textureCoordinates>
              <app:textureCoordinates ring="#wall-south-window">0.3 0.3333 0.3 0.6667 0.5 0.6667 0.5 0.3333 0.3 0.3333</app:textureCoordinates>
            </app:TexCoordList>
          </app:target>
        </app:ParameterizedTexture>
      </app:surfaceDataMember>
      <app:surfaceDataMember>
        <app:X3DMaterial gml:id="roof-tiles">
          <app:ambientIntensity>0.4</app:ambientIntensity>
          <app:diffuseColor>0.6 0.2 0.1</app:diffuseColor>
          <app:specularColor>0.1 0.1 0.1</app:specularColor>
          <app:shininess>0.2</app:shininess>
          <app:transparency>0</app:transparency>
          <app:target>#roof-south-poly</app:target>
          <app:target>#roof-north-poly</app:target>
        </app:X3DMaterial>
      </app:surfaceDataMember>
    </app:Appearance>
  </app:appearanceMember>
</core:CityModel>
