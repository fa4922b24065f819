<?xml version="1.0"?>
<CityModel xmlns="http://www.opengis.net/citygml/2.0"><cityObjectMember><bldg:Building xmlns:bldg="http://www.opengis.net/citygml/building/2.0">
</cityObjectMember>
