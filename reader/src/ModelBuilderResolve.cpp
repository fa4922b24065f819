// The second half of ModelBuilder: geometry closing steps and the resolution of references by id
// once the whole document has been read.
#include "ModelBuilder.h"

#include "ModelBuilderTypes.h"
#include "Numbers.h"
#include "PathIndex.h"

#include <algorithm>

namespace citygml {

void ModelBuilder::addRingCoordinates(std::string_view text, int dimension, int tupleDimension) {
    if (m_ringBad)
        return;
    if (tupleDimension == 0 || tupleDimension == -1) {
        m_numbers.clear();
        if (!Numbers::parseList(text, m_numbers)) {
            m_ringBad = true;
            return;
        }
        // A single gml:pos says its own dimension by its length.
        if (tupleDimension == -1)
            dimension = static_cast<int>(m_numbers.size());
    }
    if ((dimension != 2 && dimension != 3) ||
        m_numbers.size() % static_cast<std::size_t>(dimension))
        m_ringBad = true;
    if (m_ringBad)
        return;
    for (std::size_t i = 0; i < m_numbers.size(); i += static_cast<std::size_t>(dimension))
        m_ringVertices.emplace_back(m_numbers[i], m_numbers[i + 1],
                                    dimension == 3 ? m_numbers[i + 2] : 0.0);
}

void ModelBuilder::endRing() {
    m_inRing = false;
    if (m_ringBad) {
        warn("ring '" + std::string(m_ringId) + "' has unreadable coordinates and is dropped");
        return;
    }
    if (!m_ringVertices.empty() && m_ringVertices.back() != m_ringVertices.front())
        m_ringVertices.push_back(m_ringVertices.front());
    if (m_ringVertices.size() < 4) {
        warn("ring '" + std::string(m_ringId) + "' has fewer than 4 positions and is dropped");
        return;
    }
    if (m_ringExterior && m_polygon->m_exterior) {
        warn("polygon '" + std::string(m_polygon->getId()) +
             "' has a second exterior ring; it is ignored");
        return;
    }
    TVec3d* vertices = m_store.array<TVec3d>(m_ringVertices.size());
    std::copy(m_ringVertices.begin(), m_ringVertices.end(), vertices);
    auto* ring =
        m_store.create<LinearRing>(m_ringId, m_ringExterior, vertices, m_ringVertices.size());
    if (m_ringExterior)
        m_polygon->m_exterior = ring;
    else
        m_polygon->m_interior.push_back(m_store, ring);
    m_ringId = {};
}

void ModelBuilder::endPolygon() {
    Polygon* polygon = m_polygon;
    m_polygon = nullptr;
    m_inRing = false;
    if (!polygon->m_exterior) {
        warn("polygon '" + std::string(polygon->getId()) +
             "' has no usable exterior ring and is dropped");
        return;
    }
    if (m_params.tesselate && m_tesselator) {
        std::vector<TVec3d> vertices;
        std::vector<unsigned int> sizes;
        auto add = [&](LinearRing const& r) {
            vertices.insert(vertices.end(), r.vertexData(), r.vertexData() + r.vertexCount() - 1);
            sizes.push_back(static_cast<unsigned int>(r.vertexCount() - 1));
        };
        add(*polygon->m_exterior);
        for (LinearRing const* r : polygon->m_interior)
            add(*r);
        polygon->m_indices = m_tesselator->triangulate(vertices, sizes);
    }
    if (m_geometries.empty())
        return;
    m_geometries.back().first->m_polygons.push_back(m_store, polygon);
    if (!polygon->hasGeneratedId())
        m_namedPolygons.push_back(polygon);
}

void ModelBuilder::endEnvelopePosition(Sym sym, std::string_view text) {
    std::vector<double> v;
    int dim = 0;
    bool ok = sym == Sym::Coordinates ? Numbers::parseCoordinates(text, ',', ' ', '.', v, dim)
                                      : Numbers::parseList(text, v);
    if (!ok) {
        warn("unreadable envelope corner '" + std::string(text) + "'");
        return;
    }
    Envelope& e = envelopeOf(*m_envelopeOwner);
    auto corner = [&](std::size_t at, TVec3d& out, bool& has) {
        out = TVec3d(v[at], v[at + 1], dim == 3 ? v[at + 2] : 0.0);
        has = true;
    };
    if (sym != Sym::Coordinates)
        dim = static_cast<int>(v.size());
    if (dim != 2 && dim != 3) {
        warn("envelope corner without 2 or 3 values");
        return;
    }
    if (sym == Sym::LowerCorner)
        corner(0, e.m_lower, e.m_hasLower);
    else if (sym == Sym::UpperCorner)
        corner(0, e.m_upper, e.m_hasUpper);
    else if (sym == Sym::Pos)
        m_envelopeCorner++ == 0 ? corner(0, e.m_lower, e.m_hasLower)
                                : corner(0, e.m_upper, e.m_hasUpper);
    else if (v.size() == static_cast<std::size_t>(2 * dim)) {
        corner(0, e.m_lower, e.m_hasLower);
        corner(static_cast<std::size_t>(dim), e.m_upper, e.m_hasUpper);
    }
}

void ModelBuilder::endGenericAttribute() {
    if (m_generic.empty())
        return;
    GenericAttribute g = std::move(m_generic.back());
    m_generic.pop_back();
    if (g.isSet || g.name.empty())
        return;
    FeatureObject* owner =
        m_objects.empty() ? static_cast<FeatureObject*>(m_model.get()) : m_objects.back().object;
    attributesOf(*owner)[g.name] = AttributeValue(std::move(g.value), g.type);
}

void ModelBuilder::endTarget(Frame const& frame, std::string_view text) {
    if (frame.ownsPending) {
        flushPendingTarget();
        return;
    }
    std::string_view id = frame.href.empty() ? stripHashText(text) : frame.href;
    if (id.empty() || m_currentData < 0)
        return;
    if (frame.href.empty())
        id = m_store.copy(id);
    if (m_pending->active) {
        m_pending->targetId = id;
        return;
    }
    SurfaceData& sd = m_surfaceData[static_cast<std::size_t>(m_currentData)];
    if (sd.material)
        sd.materialTargets.push_back(id);
    else
        sd.textureTargets.push_back(
            m_store.create<TextureTargetDefinition>(id, sd.texture, modelId({}), &m_store));
}

void ModelBuilder::flushPendingTarget() {
    PendingTarget& pending = *m_pending;
    bool active = pending.active;
    pending.active = false;
    if (!active || m_currentData < 0 || pending.targetId.empty())
        return;
    SurfaceData& sd = m_surfaceData[static_cast<std::size_t>(m_currentData)];
    if (!sd.texture)
        return;
    auto* def = m_store.create<TextureTargetDefinition>(pending.targetId, sd.texture, modelId({}),
                                                        &m_store);
    for (TextureCoordinates* c : pending.coords)
        def->m_coords.push_back(m_store, c);
    sd.textureTargets.push_back(def);
}

std::string_view ModelBuilder::stripHashText(std::string_view s) {
    s = Numbers::trim(s);
    if (auto hash = s.find('#'); hash != std::string_view::npos)
        s.remove_prefix(hash + 1);
    return s;
}

void ModelBuilder::resolveSharedPolygons() {
    for (auto& ref : m_sharedRefs) {
        std::string_view id(m_sharedRefIds.data() + ref.idOffset, ref.idLength);
        if (Polygon* polygon = m_polygonsById.find(id))
            ref.geometry->m_polygons[ref.slot] = polygon;
        else
            warn("shared polygon '" + std::string(id) + "' is not in the document");
    }
}

// Runs last: the id table points into the polygon lists, which this reshuffles.
void ModelBuilder::dropUnresolvedSlots() {
    std::vector<Geometry*> touched;
    for (auto const& ref : m_sharedRefs)
        touched.push_back(ref.geometry);
    std::sort(touched.begin(), touched.end());
    touched.erase(std::unique(touched.begin(), touched.end()), touched.end());
    for (Geometry* g : touched)
        g->m_polygons.removeNulls();
}

void ModelBuilder::assign(AppearanceTarget& target, std::string_view theme, bool front,
                          TextureTargetDefinition* texture, MaterialTargetDefinition* material) {
    for (auto const& a : target.m_assignments)
        if (a.front == front && a.theme == theme &&
            ((texture && a.texture) || (material && a.material)))
            return;
    target.m_assignments.push_back(m_store, {theme, front, texture, material});
}

void ModelBuilder::assignToGeometry(Geometry& g, std::string_view theme, bool front,
                                    TextureTargetDefinition* texture,
                                    MaterialTargetDefinition* material) {
    assign(g, theme, front, texture, material);
    // Slots of unresolved shared polygons are still empty here.
    for (Polygon* p : g.m_polygons)
        if (p)
            assign(*p, theme, front, texture, material);
    for (Geometry* c : g.m_children)
        assignToGeometry(*c, theme, front, texture, material);
}

void ModelBuilder::resolveAppearances() {
    struct Resolved {
        SurfaceData* data;
        std::string_view theme;
    };
    std::vector<Resolved> links;
    std::vector<std::string> themes;
    for (auto& link : m_themeLinks) {
        std::size_t index = link.data;
        if (index == SIZE_MAX) {
            auto it = m_surfaceDataById.find(std::string(link.dataId));
            if (it == m_surfaceDataById.end()) {
                warn("surface data '" + std::string(link.dataId) + "' is not in the document");
                continue;
            }
            index = it->second;
        }
        SurfaceData& sd = m_surfaceData[index];
        Appearance* app = sd.material ? static_cast<Appearance*>(sd.material.get())
                                      : static_cast<Appearance*>(sd.texture.get());
        if (std::find(app->m_themes.begin(), app->m_themes.end(), link.theme) ==
            app->m_themes.end())
            app->m_themes.emplace_back(link.theme);
        themes.emplace_back(link.theme);
        links.push_back({&sd, link.theme});
    }
    std::sort(themes.begin(), themes.end());
    themes.erase(std::unique(themes.begin(), themes.end()), themes.end());
    m_model->m_themes = std::move(themes);

    // One definition per material and target, shared by every theme the material is used in.
    auto materialDef = [&](SurfaceData& sd, std::size_t index) {
        if (sd.materialDefinitions.size() < sd.materialTargets.size())
            sd.materialDefinitions.resize(sd.materialTargets.size());
        MaterialTargetDefinition*& def = sd.materialDefinitions[index];
        if (!def)
            def = m_store.create<MaterialTargetDefinition>(sd.materialTargets[index], sd.material,
                                                           modelId({}), &m_store);
        return def;
    };
    // Polygons named directly come first, so a polygon's own appearance beats its geometry's.
    for (int pass = 0; pass < 2; ++pass) {
        for (auto const& link : links) {
            SurfaceData& sd = *link.data;
            bool front = sd.material ? sd.material->isFront() : sd.texture->isFront();
            auto apply = [&](std::string_view target, TextureTargetDefinition* tex, bool material,
                             std::size_t index) {
                if (pass == 0) {
                    if (Polygon* p = m_polygonsById.find(target))
                        assign(*p, link.theme, front, tex,
                               material ? materialDef(sd, index) : nullptr);
                    return;
                }
                if (m_polygonsById.find(target))
                    return;
                if (Geometry* g = m_geometriesById.find(target))
                    assignToGeometry(*g, link.theme, front, tex,
                                     material ? materialDef(sd, index) : nullptr);
                else
                    warn("appearance target '" + std::string(target) +
                         "' is not a polygon or geometry");
            };
            for (TextureTargetDefinition* def : sd.textureTargets)
                apply(def->getTargetID(), def, false, 0);
            for (std::size_t i = 0; i < sd.materialTargets.size(); ++i)
                apply(sd.materialTargets[i], nullptr, true, i);
        }
    }
}

void ModelBuilder::indexTargets() {
    // Files without references skip the id maps altogether.
    bool targets = false;
    for (auto const& sd : m_surfaceData)
        targets = targets || !sd.textureTargets.empty() || !sd.materialTargets.empty();
    if (m_sharedRefs.empty() && !targets)
        return;
    m_polygonsById.reserve(m_namedPolygons.size());
    for (Polygon* p : m_namedPolygons)
        m_polygonsById.insert(p->getId(), p);
    if (targets) {
        m_geometriesById.reserve(m_namedGeometries.size());
        for (Geometry* g : m_namedGeometries)
            m_geometriesById.insert(g->getId(), g);
    }
}

std::shared_ptr<CityModel> ModelBuilder::finish() {
    indexTargets();
    resolveSharedPolygons();
    resolveAppearances();
    if (!m_documentSrsName.empty() &&
        (!m_model->m_envelope || m_model->m_envelope->m_srsName.empty()))
        envelopeOf(*m_model).m_srsName = m_documentSrsName;
    m_polygonsById.clear();
    m_geometriesById.clear();
    dropUnresolvedSlots();
    return std::move(m_model);
}

} // namespace citygml
