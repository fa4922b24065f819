#include "CityGml.h"

namespace testsupport {

std::string cityModel(std::string const& members, int version) {
    std::string const v = version == 1 ? "1.0" : version == 3 ? "3.0" : "2.0";
    auto const ns = [&](std::string const& name) {
        return "http://www.opengis.net/citygml/" + name + "/" + v;
    };
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<core:CityModel xmlns:core=\"http://www.opengis.net/citygml/" +
           v + "\" xmlns:bldg=\"" + ns("building") + "\" xmlns:app=\"" + ns("appearance") +
           "\" xmlns:gen=\"" + ns("generics") + "\" xmlns:gml=\"http://www.opengis.net/gml" +
           (version == 3 ? "/3.2" : "") + "\" xmlns:xlink=\"http://www.w3.org/1999/xlink\">\n" +
           members + "\n</core:CityModel>\n";
}

std::string polygon(std::string const& id, std::string const& exterior,
                    std::vector<std::string> const& interiors) {
    std::string text = "<gml:Polygon gml:id=\"" + id +
                       "\"><gml:exterior><gml:LinearRing gml:id=\"" + id + "-r0\"><gml:posList>" +
                       exterior + "</gml:posList></gml:LinearRing></gml:exterior>";
    for (std::size_t i = 0; i < interiors.size(); ++i)
        text += "<gml:interior><gml:LinearRing gml:id=\"" + id + "-r" + std::to_string(i + 1) +
                "\"><gml:posList>" + interiors[i] +
                "</gml:posList></gml:LinearRing></gml:interior>";
    return text + "</gml:Polygon>";
}

std::string multiSurface(std::string const& property, std::vector<std::string> const& polygons,
                         std::string const& id) {
    std::string text =
        "<" + property + "><gml:MultiSurface" + (id.empty() ? "" : " gml:id=\"" + id + "\"") + ">";
    for (auto const& p : polygons)
        text += "<gml:surfaceMember>" + p + "</gml:surfaceMember>";
    return text + "</gml:MultiSurface></" + property + ">";
}

std::string unitSquare(double z) {
    std::string const h = std::to_string(z);
    return "0 0 " + h + " 1 0 " + h + " 1 1 " + h + " 0 1 " + h + " 0 0 " + h;
}

} // namespace testsupport
