#pragma once

#include "decoder/CityGMLDecoder.h"

#include <koltx/Geometry.h>
#include <koltx/Mesh.h>

#include <gtest/gtest.h>

#include <algorithm>

#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace decodertest {

// A CityGML 2.0 document around the given city object members (and anything else at model level).
inline std::string cityModel(std::string const& members) {
    return R"(<?xml version="1.0" encoding="UTF-8"?>
<core:CityModel xmlns:core="http://www.opengis.net/citygml/2.0"
    xmlns:bldg="http://www.opengis.net/citygml/building/2.0"
    xmlns:app="http://www.opengis.net/citygml/appearance/2.0"
    xmlns:gen="http://www.opengis.net/citygml/generics/2.0"
    xmlns:gml="http://www.opengis.net/gml" xmlns:xlink="http://www.w3.org/1999/xlink">
)" + members +
           "\n</core:CityModel>\n";
}

// A gml:Polygon with an exterior ring and optional interior rings, ids on polygon and rings.
inline std::string polygon(std::string const& id, std::string const& exterior,
                           std::vector<std::string> const& interiors = {}) {
    std::string text = "<gml:Polygon gml:id=\"" + id +
                       "\"><gml:exterior><gml:LinearRing gml:id=\"" + id + "-r0\"><gml:posList>" +
                       exterior + "</gml:posList></gml:LinearRing></gml:exterior>";
    for (std::size_t i = 0; i < interiors.size(); ++i) {
        text += "<gml:interior><gml:LinearRing gml:id=\"" + id + "-r" + std::to_string(i + 1) +
                "\"><gml:posList>" + interiors[i] +
                "</gml:posList></gml:LinearRing></gml:interior>";
    }
    return text + "</gml:Polygon>";
}

inline std::string multiSurface(std::string const& property, std::vector<std::string> const& polys,
                                std::string const& id = "") {
    std::string text =
        "<" + property + "><gml:MultiSurface" + (id.empty() ? "" : " gml:id=\"" + id + "\"") + ">";
    for (auto const& p : polys)
        text += "<gml:surfaceMember>" + p + "</gml:surfaceMember>";
    return text + "</gml:MultiSurface></" + property + ">";
}

inline std::string square(double z = 0) {
    std::string const h = std::to_string(z);
    return "0 0 " + h + " 1 0 " + h + " 1 1 " + h + " 0 1 " + h + " 0 0 " + h;
}

struct Decoded {
    std::vector<std::shared_ptr<koltx::Content>> results;
    std::wstring warnings;

    std::shared_ptr<koltx::Geometry> geometry() const {
        return results.empty() ? nullptr
                               : std::dynamic_pointer_cast<koltx::Geometry>(results.front());
    }
    std::vector<std::wstring> meshNames() const {
        std::vector<std::wstring> names;
        if (auto g = geometry()) {
            for (auto const& m : g->getMeshes())
                names.push_back(m->getName());
        }
        return names;
    }
    koltx::Mesh const& mesh(std::size_t i) const { return *geometry()->getMeshes().at(i); }
};

inline Decoded decode(CityGMLDecoder& decoder, std::string const& text,
                      std::wstring const& key = L"/nonexistent/test.gml",
                      koltx::ResolveMap const* resolveMap = nullptr, kolt::Cache* cache = nullptr) {
    Decoded out;
    std::istringstream stream(text);
    decoder.decode(out.results, stream, cache, key, resolveMap, out.warnings);
    return out;
}

inline Decoded decode(std::string const& text) {
    CityGMLDecoder decoder;
    return decode(decoder, text);
}

} // namespace decodertest
