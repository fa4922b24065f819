// Fuzz entry for citygml::load: any byte string must give a model or a std::runtime_error, and a
// model must keep the reader's promises (closed rings of at least four positions, an exterior
// ring in every polygon, paths ending in a backslash).
#include <citygml/citygml.h>

#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <stdexcept>
#include <string>

namespace {

void check(bool condition) {
    if (!condition)
        std::abort();
}

void checkRing(citygml::LinearRing const& r) {
    auto const& v = r.getVertices();
    check(v.size() >= 4);
    check(v.front() == v.back());
}

void checkGeometry(citygml::Geometry const& g) {
    std::string path = g.getNodeStackPath(g.getId(), nullptr);
    check(!path.empty() && path.back() == '\\');
    for (unsigned i = 0; i < g.getPolygonsCount(); ++i) {
        auto p = g.getPolygon(i);
        check(p && p->exteriorRing());
        checkRing(*p->exteriorRing());
        for (auto const& r : p->interiorRings())
            checkRing(*r);
        for (auto const& theme : p->getAllTextureThemes(true)) {
            auto def = p->getTextureTargetDefinitionForTheme(theme, true);
            check(def != nullptr && def->getAppearance() != nullptr);
            for (unsigned k = 0; k < def->getTextureCoordinatesCount(); ++k)
                check(def->getTextureCoordinates(k)->getCoords().size() ==
                      def->getTextureCoordinates(k)->size());
            if (auto c = def->getTextureCoordinatesForID(p->exteriorRing()->getId()))
                check(!c->getTargetLinearRingID().empty());
        }
        for (auto const& theme : p->getAllMaterialThemes(true))
            check(p->getMaterialFor(theme) != nullptr);
    }
    for (unsigned i = 0; i < g.getGeometriesCount(); ++i)
        checkGeometry(g.getGeometry(i));
}

void checkObject(citygml::CityObject const& o) {
    std::string path = o.getNodeStackPath(o.getId(), nullptr);
    check(!path.empty() && path.back() == '\\');
    for (unsigned i = 0; i < o.getChildCityObjectsCount(); ++i)
        checkObject(o.getChildCityObject(i));
    for (unsigned i = 0; i < o.getGeometriesCount(); ++i)
        checkGeometry(o.getGeometry(i));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    std::istringstream in(std::string(reinterpret_cast<char const*>(data), size));
    try {
        citygml::ParserParams params;
        params.tesselate = false;
        auto model = citygml::load(in, params);
        check(model != nullptr);
        for (auto const* root : model->getRootCityObjects())
            checkObject(*root);
    } catch (std::runtime_error const&) {
        // Malformed XML is reported this way; anything else escapes and fails the run.
    }
    return 0;
}
