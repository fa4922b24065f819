#pragma once

#include <citygml/citygml.h>

#include <memory>
#include <sstream>
#include <string>

namespace readertest {

inline std::shared_ptr<citygml::CityModel const> loadText(std::string const& text) {
    std::istringstream in(text);
    citygml::ParserParams params;
    params.tesselate = false;
    return citygml::load(in, params);
}

inline std::string pathOf(citygml::CityObject const& o) {
    return o.getNodeStackPath(o.getId(), nullptr);
}

inline std::string pathOf(citygml::Geometry const& g) {
    return g.getNodeStackPath(g.getId(), nullptr);
}

// Wraps city object members into a CityGML 2.0 model with the usual prefixes.
inline std::string model2(std::string const& members) {
    return R"(<?xml version="1.0" encoding="UTF-8"?>
<core:CityModel xmlns:core="http://www.opengis.net/citygml/2.0"
  xmlns:bldg="http://www.opengis.net/citygml/building/2.0"
  xmlns:app="http://www.opengis.net/citygml/appearance/2.0"
  xmlns:gen="http://www.opengis.net/citygml/generics/2.0"
  xmlns:dem="http://www.opengis.net/citygml/relief/2.0"
  xmlns:gml="http://www.opengis.net/gml" xmlns:xlink="http://www.w3.org/1999/xlink">)" +
           members + "</core:CityModel>";
}

inline std::string square(std::string const& polygonId = "", std::string const& ringId = "") {
    std::string p =
        polygonId.empty() ? "<gml:Polygon>" : "<gml:Polygon gml:id=\"" + polygonId + "\">";
    std::string r =
        ringId.empty() ? "<gml:LinearRing>" : "<gml:LinearRing gml:id=\"" + ringId + "\">";
    return p + "<gml:exterior>" + r +
           "<gml:posList>0 0 0 1 0 0 1 1 0 0 1 0 0 0 0</gml:posList></gml:LinearRing>"
           "</gml:exterior></gml:Polygon>";
}

} // namespace readertest
