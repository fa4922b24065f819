#include "CrsName.h"

#include <cctype>
#include <regex>
#include <utility>

namespace {

// AdV names of horizontal and vertical reference systems and their EPSG codes.
std::pair<char const*, char const*> const AdvCodes[] = {
    {"ETRS89_UTM32", "25832"}, {"ETRS89_UTM33", "25833"},   {"ETRS89_Lat-Lon", "4258"},
    {"DE_DHDN_3GK2", "31466"}, {"DE_DHDN_3GK3", "31467"},   {"DE_DHDN_3GK4", "31468"},
    {"DE_DHDN_3GK5", "31469"}, {"DE_DHHN92_NH", "5783"},    {"DE_DHHN2016_NH", "7837"},
    {"DE_DHHN12_NOH", "5784"}, {"DE_DHDN_Lat-Lon", "4314"},
};

std::optional<std::string> advCode(std::string const& name) {
    for (auto const& [adv, code] : AdvCodes) {
        if (name == adv)
            return std::string(code);
    }
    return std::nullopt;
}

bool startsWith(std::string const& text, char const* prefix) {
    return text.rfind(prefix, 0) == 0;
}

} // namespace

std::optional<std::string> CrsName::toProj(std::string const& srsName) {
    std::string const name = srsName;
    static std::regex const epsg(R"(EPSG:(\d+)(\+\d+)?)", std::regex::icase);
    if (std::regex_match(name, epsg))
        return "EPSG:" + name.substr(5);
    if (startsWith(name, "urn:ogc:def:crs")) {
        // `crs:EPSG:27700` inside a compound URN lacks the version field PROJ expects.
        static std::regex const missingVersion(R"(crs:EPSG:(\d+)(,|$))");
        return std::regex_replace(name, missingVersion, "crs:EPSG::$1$2");
    }
    if (startsWith(name, "http://www.opengis.net/def/crs/") ||
        startsWith(name, "https://www.opengis.net/def/crs/"))
        return name;
    if (startsWith(name, "urn:adv:crs:")) {
        // `ETRS89_UTM32*DE_DHHN92_NH` (and a geoid name after a second star, which PROJ has no
        // need of): horizontal, then vertical.
        std::string const rest = name.substr(12);
        std::size_t const star = rest.find('*');
        auto const horizontal = advCode(rest.substr(0, star));
        if (!horizontal)
            return std::nullopt;
        if (star == std::string::npos)
            return "EPSG:" + *horizontal;
        std::size_t const next = rest.find('*', star + 1);
        auto const vertical = advCode(rest.substr(star + 1, next - star - 1));
        return "EPSG:" + *horizontal + (vertical ? "+" + *vertical : std::string());
    }
    return std::nullopt;
}
