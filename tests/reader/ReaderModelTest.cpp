// What the reader makes of small documents, written out as text and compared with golden files:
// objects and their paths, geometries, rings, attributes, envelopes and appearances.
#include "Files.h"
#include "Golden.h"
#include "ReaderTestUtil.h"
#include "TestData.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

using namespace readertest;

namespace {

template <class V> std::string vec(V const& v) {
    std::ostringstream s;
    s << v.x << " " << v.y;
    if constexpr (sizeof(v) / sizeof(v.x) == 3)
        s << " " << v.z;
    return s.str();
}

std::string idOf(citygml::Object const& o) {
    return o.hasGeneratedId() ? "(generated)" : std::string(o.getId());
}

void describeRing(std::ostream& out, citygml::LinearRing const& r) {
    out << "      " << (r.isExterior() ? "exterior" : "interior") << " " << idOf(r) << ":";
    for (auto const& v : r.getVertices())
        out << " (" << vec(v) << ")";
    out << "\n";
}

void describeAppearance(std::ostream& out, citygml::Polygon const& p,
                        std::vector<std::string> const& themes) {
    for (bool front : {true, false}) {
        auto tex = p.getAllTextureThemes(front), mat = p.getAllMaterialThemes(front);
        if (tex.empty() && mat.empty())
            continue;
        out << "      " << (front ? "front" : "back") << " textures:";
        for (auto const& t : tex)
            out << " " << t;
        out << " materials:";
        for (auto const& t : mat)
            out << " " << t;
        out << "\n";
        for (auto const& theme : themes) {
            if (auto m = p.getMaterialFor(theme, front))
                out << "        " << theme << " material " << idOf(*m) << " diffuse "
                    << vec(m->getDiffuse()) << " emissive " << vec(m->getEmissive()) << " specular "
                    << vec(m->getSpecular()) << " ambient " << m->getAmbientIntensity()
                    << " shininess " << m->getShininess() << " transparency "
                    << m->getTransparency() << "\n";
            auto def = p.getTextureTargetDefinitionForTheme(theme, front);
            if (!def)
                continue;
            auto const& t = *def->getAppearance();
            out << "        " << theme << " texture " << idOf(t) << " " << t.getType() << " "
                << t.getUrl() << " " << t.getMimeType() << "\n";
            auto rings = p.interiorRings();
            rings.insert(rings.begin(), p.exteriorRing());
            for (auto const& ring : rings)
                if (auto c = def->getTextureCoordinatesForID(ring->getId())) {
                    out << "          " << ring->getId() << ":";
                    for (auto const& uv : c->getCoords())
                        out << " (" << vec(uv) << ")";
                    out << "\n";
                }
        }
    }
}

void describeGeometry(std::ostream& out, citygml::Geometry const& g, std::string const& indent,
                      std::vector<std::string> const& themes) {
    out << indent << "geometry " << pathOf(g) << " " << g.getTypeAsString() << " lod " << g.getLOD()
        << " srs '" << g.getSRSName() << "'\n";
    for (unsigned i = 0; i < g.getPolygonsCount(); ++i) {
        auto p = g.getPolygon(i);
        out << indent << "  polygon " << idOf(*p) << "\n";
        describeRing(out, *p->exteriorRing());
        for (auto const& r : p->interiorRings())
            describeRing(out, *r);
        describeAppearance(out, *p, themes);
    }
    for (unsigned i = 0; i < g.getGeometriesCount(); ++i)
        describeGeometry(out, g.getGeometry(i), indent + "  ", themes);
}

void describeEnvelope(std::ostream& out, citygml::Envelope const& e, std::string const& indent) {
    out << indent << "envelope '" << e.srsName() << "' "
        << (e.validBounds() ? vec(e.getLowerBound()) + " / " + vec(e.getUpperBound()) : "invalid")
        << "\n";
}

void describeObject(std::ostream& out, citygml::CityObject const& o, std::string const& indent,
                    std::vector<std::string> const& themes) {
    out << indent << "object " << pathOf(o) << " " << o.getTypeAsString() << " type "
        << static_cast<int>(o.getType()) << " id " << idOf(o) << "\n";
    for (auto const& [name, value] : o.getAttributes())
        out << indent << "  attribute " << name << " type " << static_cast<int>(value.getType())
            << " '" << value.asString() << "' int " << value.asInteger(-1) << " double "
            << value.asDouble(-1) << "\n";
    describeEnvelope(out, o.getEnvelope(), indent + "  ");
    for (unsigned i = 0; i < o.getGeometriesCount(); ++i)
        describeGeometry(out, o.getGeometry(i), indent + "  ", themes);
    for (unsigned i = 0; i < o.getChildCityObjectsCount(); ++i)
        describeObject(out, o.getChildCityObject(i), indent + "  ", themes);
}

std::string describe(citygml::CityModel const& model) {
    std::ostringstream out;
    out << "version " << model.getCityGMLVersion() << "\nthemes:";
    std::vector<std::string> themes = model.themes();
    for (auto const& t : themes)
        out << " " << t;
    if (std::find(themes.begin(), themes.end(), "") == themes.end())
        themes.insert(themes.begin(), ""); // appearances without a theme
    out << "\n";
    describeEnvelope(out, model.getEnvelope(), "");
    for (auto const& [name, value] : model.getAttributes())
        out << "attribute " << name << " '" << value.asString() << "'\n";
    for (auto const* root : model.getRootCityObjects())
        describeObject(out, *root, "", themes);
    return out.str();
}

} // namespace

TEST(ReaderModel, SmallDocumentsReadAsGolden) {
    int files = 0;
    for (auto const& name : testsupport::filesIn(testsupport::dataFile("reader/model"))) {
        SCOPED_TRACE(name);
        auto model = loadText(testsupport::readFile(testsupport::dataFile("reader/model/" + name)));
        EXPECT_TRUE(testsupport::matchesGolden("reader/" + name.substr(0, name.size() - 4) + ".txt",
                                               describe(*model), false));
        ++files;
    }
    EXPECT_GE(files, 13);
}

namespace {

std::string data(std::string const& name) {
    return testsupport::readFile(testsupport::dataFile("reader/" + name));
}

// Fans every polygon from its first corner; enough to see that the reader hands over the rings.
class FanTesselator : public citygml::TesselatorBase {
public:
    std::vector<unsigned int> triangulate(std::vector<citygml::TVec3d> const&,
                                          std::vector<unsigned int> const& ringSizes) override {
        ++calls;
        std::vector<unsigned int> out;
        for (unsigned int i = 1; i + 1 < ringSizes.at(0); ++i)
            out.insert(out.end(), {0, i, i + 1});
        return out;
    }
    int calls = 0;
};

} // namespace

TEST(ReaderModel, LookupsFiltersAndTesselation) {
    auto model = loadText(data("model/path_building_v2.gml"));
    auto const& building = model->getRootCityObject(0);
    // Any tracker of the model answers for any id; polygons and unknown ids give nothing.
    EXPECT_EQ(building.getGeometry(0).getNodeStackPath("w1", nullptr),
              "bldg:boundedby\\bldg:wallsurface[w1]\\");
    EXPECT_EQ(building.getNodeStackPath("no-such-id", nullptr), "");
    EXPECT_EQ(building.getNodeStackPath("p1", nullptr), "");

    std::istringstream lods(data("model/implicit_curves_lods.gml"));
    citygml::ParserParams params;
    params.maxLOD = 2;
    EXPECT_EQ(citygml::load(lods, params)->getRootCityObject(0).getGeometriesCount(), 1u);

    // Callers cache materials by id across files, so a material without gml:id must not share
    // its generated id with one of another file.
    auto material = [](citygml::CityModel const& m) {
        return m.getRootCityObject(0).getGeometry(0).getPolygon(0)->getMaterialFor("");
    };
    auto first = loadText(data("material_without_id.gml"));
    auto second = loadText(data("material_without_id.gml"));
    ASSERT_TRUE(material(*first) && material(*second));
    EXPECT_NE(material(*first)->getId(), material(*second)->getId());

    auto fan = std::make_shared<FanTesselator>();
    std::string const square = data("model/path_polygon_in_property.gml");
    for (bool tesselate : {true, false}) {
        std::istringstream in(square);
        params = citygml::ParserParams();
        params.tesselate = tesselate;
        auto p = citygml::load(in, params, fan)->getRootCityObject(0).getGeometry(0).getPolygon(0);
        // Triangles are extra: the ring stays as written.
        EXPECT_EQ(p->getIndices(), (tesselate ? std::vector<unsigned int>{0, 1, 2, 0, 2, 3}
                                              : std::vector<unsigned int>{}));
        EXPECT_EQ(p->exteriorRing()->getVertices().size(), 5u);
    }
    EXPECT_EQ(fan->calls, 1);
}
