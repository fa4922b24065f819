<core:CityModel xmlns:core="http://www.opengis.net/citygml/3.0"
      xmlns:gen="http://www.opengis.net/citygml/generics/3.0"
      xmlns:gml="http://www.opengis.net/gml/3.2"><core:cityObjectMember>
      <gen:GenericOccupiedSpace gml:id="o"><core:genericAttribute><gen:IntAttribute>
      <gen:name>floors</gen:name><gen:value>3</gen:value></gen:IntAttribute></core:genericAttribute>
      <core:genericAttribute><gen:GenericAttributeSet><gen:name>group</gen:name><gen:value>
      <gen:DoubleAttribute><gen:name>area</gen:name><gen:value>8.5</gen:value></gen:DoubleAttribute>
      </gen:value></gen:GenericAttributeSet></core:genericAttribute>
      </gen:GenericOccupiedSpace></core:cityObjectMember></core:CityModel>
