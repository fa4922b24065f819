#pragma once

#include <optional>
#include <string>

// The spatial reference names that CityGML files carry, turned into text PROJ reads:
// `EPSG:25832`, `EPSG:25832+7837`, `urn:ogc:def:crs:EPSG::25832`, the compound
// `urn:ogc:def:crs,crs:EPSG::25833,crs:EPSG::5783`, `http://www.opengis.net/def/crs/EPSG/0/6697`
// and the German `urn:adv:crs:ETRS89_UTM32*DE_DHHN92_NH` family. Anything else (a bare name such
// as `CH1903`, a local `#crs` reference) is not guessed at: nullopt.
class CrsName {
public:
    static std::optional<std::string> toProj(std::string const& srsName);
};
