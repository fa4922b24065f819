#pragma once

#include "ObjectArena.h"
#include "PathIndex.h"

#include <citygml/Appearance.h>
#include <citygml/AppearanceTarget.h>
#include <citygml/CityModel.h>
#include <citygml/CityObject.h>
#include <citygml/Envelope.h>
#include <citygml/FeatureObject.h>
#include <citygml/Geometry.h>
#include <citygml/Material.h>
#include <citygml/Polygon.h>
#include <citygml/Texture.h>
#include <citygml/TextureTargetDefinition.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace citygml::detail {

// The one friend of the model's classes: the setters the reader needs while it fills a model,
// and nothing else. Everything it makes lives in the model's storage.
class Access {
public:
    static ObjectArena& store(CityModel& m) { return *m.m_arena; }
    static PathIndex const* index(CityModel const& m) { return m.m_index.get(); }
    static void setId(CityModel& m, std::string_view id) {
        m.m_ownedId = std::string(id);
        m.m_id = m.m_ownedId;
    }
    static void setNamespace(CityModel& m, std::string uri, int version) {
        m.m_coreNamespace = std::move(uri);
        m.m_version = version;
    }
    static void setVersion(CityModel& m, int version) { m.m_version = version; }
    static void addRoot(CityModel& m, CityObject* o) { m.m_roots.push_back(o); }
    // Tags of application-domain features, which the shared tag table does not hold.
    static std::string const* addTag(CityModel& m, std::string tag) {
        m.m_extraTags.push_back(std::move(tag));
        return &m.m_extraTags.back();
    }
    static void setThemes(CityModel& m, std::vector<std::string> themes) {
        m.m_themes = std::move(themes);
    }

    // Made on demand: most objects have neither attributes nor an envelope.
    static AttributesMap& attributes(Object& o, ObjectArena& store) {
        if (!o.m_attributes)
            o.m_attributes = store.create<AttributesMap>();
        return *o.m_attributes;
    }
    static Envelope& envelope(FeatureObject& o, ObjectArena& store) {
        if (!o.m_envelope)
            o.m_envelope = store.create<Envelope>();
        return *o.m_envelope;
    }
    static void setLower(Envelope& e, TVec3d v) {
        e.m_lower = v;
        e.m_hasLower = true;
    }
    static void setUpper(Envelope& e, TVec3d v) {
        e.m_upper = v;
        e.m_hasUpper = true;
    }
    static void setSrsName(Envelope& e, std::string_view srs) { e.m_srsName = srs; }

    static void place(HierarchyTracker& t, std::string_view path, PathIndex const* index) {
        t.m_path = path;
        t.m_index = index;
    }
    static void addChild(CityObject& o, CityObject* child, ObjectArena& store) {
        o.m_children.push_back(store, child);
    }
    static void addGeometry(CityObject& o, Geometry* g, ObjectArena& store) {
        o.m_geometries.push_back(store, g);
    }

    static void setTag(Geometry& g, std::string const* tag) { g.m_tag = tag; }
    static void setSrsName(Geometry& g, std::string_view srs) { g.m_srsName = srs; }
    static void addChild(Geometry& g, Geometry* child, ObjectArena& store) {
        g.m_children.push_back(store, child);
    }
    // Slots may be null while shared polygons wait to be resolved.
    static ObjectList<Polygon*>& polygons(Geometry& g) { return g.m_polygons; }
    static ObjectList<Geometry*> const& children(Geometry const& g) { return g.m_children; }

    static void setExterior(Polygon& p, LinearRing* r) { p.m_exterior = r; }
    static void addInterior(Polygon& p, LinearRing* r, ObjectArena& store) {
        p.m_interior.push_back(store, r);
    }
    static void setIndices(Polygon& p, std::vector<unsigned int> indices) {
        p.m_indices = std::move(indices);
    }

    // Per theme and side, the first texture and the first material assigned win.
    static void assign(AppearanceTarget& t, std::string_view theme, bool front,
                       TextureTargetDefinition* texture, MaterialTargetDefinition* material,
                       ObjectArena& store) {
        for (auto const& a : t.m_assignments)
            if (a.front == front && a.theme == theme &&
                ((texture && a.texture) || (material && a.material)))
                return;
        t.m_assignments.push_back(store, {theme, front, texture, material});
    }

    static void setFront(Appearance& a, bool front) { a.m_isFront = front; }
    static void addTheme(Appearance& a, std::string_view theme) {
        if (std::find(a.m_themes.begin(), a.m_themes.end(), theme) == a.m_themes.end())
            a.m_themes.emplace_back(theme);
    }
    static void setUrl(Texture& t, std::string_view v) { t.m_url = std::string(v); }
    static void setMimeType(Texture& t, std::string_view v) { t.m_mimeType = std::string(v); }
    static void setWrapMode(Texture& t, std::string_view v) { t.m_wrapMode = std::string(v); }
    static void setDiffuse(Material& m, TVec3f v) { m.m_diffuse = v; }
    static void setEmissive(Material& m, TVec3f v) { m.m_emissive = v; }
    static void setSpecular(Material& m, TVec3f v) { m.m_specular = v; }
    static void setAmbientIntensity(Material& m, float v) { m.m_ambientIntensity = v; }
    static void setShininess(Material& m, float v) { m.m_shininess = v; }
    static void setTransparency(Material& m, float v) { m.m_transparency = v; }
    static void setSmooth(Material& m, bool v) { m.m_isSmooth = v; }
    static void addCoordinates(TextureTargetDefinition& d, TextureCoordinates* c,
                               ObjectArena& store) {
        d.m_coords.push_back(store, c);
    }
};

} // namespace citygml::detail
