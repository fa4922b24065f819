<?xml version="1.0" encoding="UTF-8"?>
<core:CityModel xmlns:core="http://www.opengis.net/citygml/2.0"
  xmlns:bldg="http://www.opengis.net/citygml/building/2.0"
  xmlns:app="http://www.opengis.net/citygml/appearance/2.0"
  xmlns:gen="http://www.opengis.net/citygml/generics/2.0"
  xmlns:dem="http://www.opengis.net/citygml/relief/2.0"
  xmlns:gml="http://www.opengis.net/gml" xmlns:xlink="http://www.w3.org/1999/xlink"><core:cityObjectMember><bldg:Building gml:id="b">
      <gml:name>Town hall</gml:name>
      <gen:stringAttribute name="s"><gen:value>text</gen:value></gen:stringAttribute>
      <gen:intAttribute name="i"><gen:value> 42 </gen:value></gen:intAttribute>
      <gen:doubleAttribute name="d"><gen:value>2.5</gen:value></gen:doubleAttribute>
      <gen:dateAttribute name="when"><gen:value>2020-05-01</gen:value></gen:dateAttribute>
      <gen:uriAttribute name="u"><gen:value>http://example.org</gen:value></gen:uriAttribute>
      <gen:measureAttribute name="m"><gen:value uom="m">3.25</gen:value></gen:measureAttribute>
      <gen:genericAttributeSet name="set"><gen:intAttribute name="inner"><gen:value>7</gen:value>
      </gen:intAttribute></gen:genericAttributeSet>
      <bldg:function>1000</bldg:function><bldg:measuredHeight uom="m">12.5</bldg:measuredHeight>
      <bldg:boundedBy><bldg:WallSurface gml:id="w"><gen:stringAttribute name="own">
      <gen:value>wall</gen:value></gen:stringAttribute></bldg:WallSurface></bldg:boundedBy>
      </bldg:Building></core:cityObjectMember></core:CityModel>
