<?xml version="1.0"?>
<!DOCTYPE CityModel [ <!ENTITY ext SYSTEM "file:///etc/hostname"> <!ENTITY a "aaaaaaaaaa"> <!ENTITY b "&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;"> ]>
<CityModel xmlns="http://www.opengis.net/citygml/2.0" xmlns:gml="http://www.opengis.net/gml"><gml:name>&ext;&b;</gml:name></CityModel>
