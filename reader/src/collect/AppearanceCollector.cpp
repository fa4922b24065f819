#include "AppearanceCollector.h"

#include "../Access.h"
#include "../IdSource.h"
#include "../Numbers.h"

#include <algorithm>
#include <cstdint>

namespace citygml {

using detail::Access;
using Sym = ElementSym;

struct AppearanceCollector::SurfaceData {
    std::shared_ptr<Material> material;
    std::shared_ptr<Texture> texture;
    std::vector<TextureTargetDefinition*> textureTargets;
    std::vector<std::string_view> materialTargets;
    std::vector<MaterialTargetDefinition*> materialDefinitions;

    Appearance& appearance() const {
        return material ? static_cast<Appearance&>(*material) : *texture;
    }
};

// The texture target being read; reused from one target to the next.
struct AppearanceCollector::PendingTarget {
    bool active = false;
    std::string_view targetId;
    std::vector<TextureCoordinates*> coords;

    void start(std::string_view target) {
        active = true;
        targetId = target;
        coords.clear();
    }
};

// Surface data `data` (or the one with id `dataId`) applies in `theme`.
struct AppearanceCollector::ThemeLink {
    std::size_t data;
    std::string_view dataId;
    std::string_view theme;
};

namespace {

bool parseBool(std::string_view text) {
    text = Numbers::trim(text);
    return text == "true" || text == "1";
}

bool parseColor(std::string_view text, TVec3f& out) {
    std::vector<double> v;
    if (!Numbers::parseList(text, v) || v.size() != 3)
        return false;
    out = TVec3f(static_cast<float>(v[0]), static_cast<float>(v[1]), static_cast<float>(v[2]));
    return true;
}

bool parseScalar(std::string_view text, float& out) {
    double v = 0;
    if (!Numbers::parseOne(Numbers::trim(text), v))
        return false;
    out = static_cast<float>(v);
    return true;
}

} // namespace

AppearanceCollector::AppearanceCollector(ObjectArena& store, Diagnostics const& diagnostics)
    : m_store(store), m_diagnostics(diagnostics), m_pending(std::make_unique<PendingTarget>()) {}

AppearanceCollector::~AppearanceCollector() = default;

std::string_view AppearanceCollector::newId() {
    return m_store.copy(IdSource::next());
}

bool AppearanceCollector::start(ElementInfo const& info, std::string_view documentId,
                                AttributeList attributes, Slot& slot) {
    using Ns = AttributeList::Ns;
    switch (info.sym) {
    case Sym::Appearance:
        m_inAppearance = true;
        m_theme.clear();
        m_appearanceData.clear();
        m_appearanceRefs.clear();
        return false;
    case Sym::SurfaceDataMember:
        if (m_inAppearance)
            if (XmlAttribute const* href = attributes.find("href", Ns::Xlink))
                m_appearanceRefs.push_back(
                    m_store.copy(AttributeList::referencedId(AttributeList::text(*href))));
        return false;
    case Sym::X3DMaterial:
    case Sym::ParameterizedTexture:
    case Sym::GeoreferencedTexture: {
        SurfaceData sd;
        std::string id = documentId.empty() ? IdSource::next() : std::string(documentId);
        if (info.sym == Sym::X3DMaterial)
            sd.material = std::make_shared<Material>(id);
        else
            sd.texture = std::make_shared<Texture>(id, info.localName);
        if (!documentId.empty())
            m_surfaceDataById.emplace(id, m_surfaceData.size());
        if (m_inAppearance)
            m_appearanceData.push_back(m_surfaceData.size());
        m_currentData = static_cast<long>(m_surfaceData.size());
        m_surfaceData.push_back(std::move(sd));
        return false;
    }
    case Sym::TextureAssociation:
        if (m_currentData >= 0)
            m_pending->start({});
        return false;
    case Sym::Target:
        if (m_currentData < 0)
            return false;
        if (XmlAttribute const* uri = attributes.find("uri", Ns::None);
            uri && m_surfaceData[static_cast<std::size_t>(m_currentData)].texture) {
            flushPendingTarget();
            m_pending->start(m_store.copy(AttributeList::referencedId(AttributeList::text(*uri))));
            slot.ownsPending = true;
            return false;
        }
        if (XmlAttribute const* href = attributes.find("href", Ns::Xlink)) {
            slot.href = m_store.copy(AttributeList::referencedId(AttributeList::text(*href)));
            return false;
        }
        return true;
    case Sym::TextureCoordinates:
        if (!m_pending->active)
            return false;
        if (XmlAttribute const* ring = attributes.find("ring", Ns::None))
            slot.href = m_store.copy(AttributeList::referencedId(AttributeList::text(*ring)));
        return true;
    default:
        // Theme and the properties of materials and textures are text.
        return true;
    }
}

void AppearanceCollector::end(ElementInfo const& info, bool hasText, std::string_view text,
                              Slot const& slot) {
    switch (info.sym) {
    case Sym::Appearance: {
        std::string_view theme = m_store.copy(m_theme);
        for (std::size_t i : m_appearanceData)
            m_themeLinks.push_back({i, {}, theme});
        for (std::string_view ref : m_appearanceRefs)
            m_themeLinks.push_back({SIZE_MAX, ref, theme});
        m_inAppearance = false;
        break;
    }
    case Sym::Theme:
        if (hasText)
            m_theme = std::string(Numbers::trim(text));
        break;
    case Sym::X3DMaterial:
    case Sym::ParameterizedTexture:
    case Sym::GeoreferencedTexture:
        flushPendingTarget();
        m_currentData = -1;
        break;
    case Sym::TextureAssociation:
        flushPendingTarget();
        break;
    case Sym::Target:
        endTarget(slot, text);
        break;
    case Sym::TextureCoordinates:
        if (hasText)
            endTextureCoordinates(slot, text);
        break;
    case Sym::SurfaceDataMember:
        break;
    default:
        if (m_currentData >= 0 && hasText)
            endProperty(info.sym, info.localName, text);
        break;
    }
}

void AppearanceCollector::endProperty(ElementSym sym, std::string const& localName,
                                      std::string_view text) {
    SurfaceData& sd = m_surfaceData[static_cast<std::size_t>(m_currentData)];
    std::string_view t = Numbers::trim(text);
    Material* m = sd.material.get();
    bool ok = true;
    TVec3f color;
    float scalar = 0;
    switch (sym) {
    case Sym::IsFront:
        Access::setFront(sd.appearance(), parseBool(t));
        break;
    case Sym::ImageUri:
        if (sd.texture)
            Access::setUrl(*sd.texture, t);
        break;
    case Sym::MimeType:
        if (sd.texture)
            Access::setMimeType(*sd.texture, t);
        break;
    case Sym::WrapMode:
        if (sd.texture)
            Access::setWrapMode(*sd.texture, t);
        break;
    case Sym::DiffuseColor:
        if (m && (ok = parseColor(t, color)))
            Access::setDiffuse(*m, color);
        break;
    case Sym::EmissiveColor:
        if (m && (ok = parseColor(t, color)))
            Access::setEmissive(*m, color);
        break;
    case Sym::SpecularColor:
        if (m && (ok = parseColor(t, color)))
            Access::setSpecular(*m, color);
        break;
    case Sym::AmbientIntensity:
        if (m && (ok = parseScalar(t, scalar)))
            Access::setAmbientIntensity(*m, scalar);
        break;
    case Sym::Shininess:
        if (m && (ok = parseScalar(t, scalar)))
            Access::setShininess(*m, scalar);
        break;
    case Sym::Transparency:
        if (m && (ok = parseScalar(t, scalar)))
            Access::setTransparency(*m, scalar);
        break;
    case Sym::IsSmooth:
        if (m)
            Access::setSmooth(*m, parseBool(t));
        break;
    default:
        break;
    }
    if (!ok)
        m_diagnostics.warn("material '" + std::string(sd.appearance().getId()) +
                           "' has an unreadable " + localName);
}

void AppearanceCollector::endTarget(Slot const& slot, std::string_view text) {
    if (slot.ownsPending) {
        flushPendingTarget();
        return;
    }
    std::string_view id = slot.href.empty() ? AttributeList::referencedId(text) : slot.href;
    if (id.empty() || m_currentData < 0)
        return;
    if (slot.href.empty())
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
            m_store.create<TextureTargetDefinition>(id, sd.texture, newId(), &m_store));
}

void AppearanceCollector::endTextureCoordinates(Slot const& slot, std::string_view text) {
    if (!m_pending->active)
        return;
    m_numbers.clear();
    if (!Numbers::parseList(text, m_numbers) || m_numbers.size() % 2 != 0) {
        m_diagnostics.warn("texture coordinates of ring '" + std::string(slot.href) +
                           "' are not pairs of numbers");
        return;
    }
    std::size_t n = m_numbers.size() / 2;
    TVec2f* pairs = m_store.array<TVec2f>(n);
    for (std::size_t i = 0; i < n; ++i)
        pairs[i] =
            TVec2f(static_cast<float>(m_numbers[2 * i]), static_cast<float>(m_numbers[2 * i + 1]));
    m_pending->coords.push_back(m_store.create<TextureCoordinates>(newId(), slot.href, pairs, n));
}

void AppearanceCollector::flushPendingTarget() {
    PendingTarget& pending = *m_pending;
    bool active = pending.active;
    pending.active = false;
    if (!active || m_currentData < 0 || pending.targetId.empty())
        return;
    SurfaceData& sd = m_surfaceData[static_cast<std::size_t>(m_currentData)];
    if (!sd.texture)
        return;
    auto* def =
        m_store.create<TextureTargetDefinition>(pending.targetId, sd.texture, newId(), &m_store);
    for (TextureCoordinates* c : pending.coords)
        Access::addCoordinates(*def, c, m_store);
    sd.textureTargets.push_back(def);
}

bool AppearanceCollector::hasTargets() const {
    for (auto const& sd : m_surfaceData)
        if (!sd.textureTargets.empty() || !sd.materialTargets.empty())
            return true;
    return false;
}

void AppearanceCollector::assign(AppearanceTarget& target, std::string_view theme, bool front,
                                 TextureTargetDefinition* texture,
                                 MaterialTargetDefinition* material) {
    Access::assign(target, theme, front, texture, material, m_store);
}

void AppearanceCollector::assignToGeometry(Geometry& g, std::string_view theme, bool front,
                                           TextureTargetDefinition* texture,
                                           MaterialTargetDefinition* material) {
    assign(g, theme, front, texture, material);
    // Slots of unresolved shared polygons are still empty here.
    for (Polygon* p : Access::polygons(g))
        if (p)
            assign(*p, theme, front, texture, material);
    for (Geometry* c : Access::children(g))
        assignToGeometry(*c, theme, front, texture, material);
}

void AppearanceCollector::resolve(IdTable<Polygon> const& polygons,
                                  IdTable<Geometry> const& geometries, CityModel& model) {
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
                m_diagnostics.warn("surface data '" + std::string(link.dataId) +
                                   "' is not in the document");
                continue;
            }
            index = it->second;
        }
        SurfaceData& sd = m_surfaceData[index];
        Access::addTheme(sd.appearance(), link.theme);
        themes.emplace_back(link.theme);
        links.push_back({&sd, link.theme});
    }
    std::sort(themes.begin(), themes.end());
    themes.erase(std::unique(themes.begin(), themes.end()), themes.end());
    Access::setThemes(model, std::move(themes));

    // One definition per material and target, shared by every theme the material is used in.
    auto materialDef = [&](SurfaceData& sd, std::size_t index) {
        if (sd.materialDefinitions.size() < sd.materialTargets.size())
            sd.materialDefinitions.resize(sd.materialTargets.size());
        MaterialTargetDefinition*& def = sd.materialDefinitions[index];
        if (!def)
            def = m_store.create<MaterialTargetDefinition>(sd.materialTargets[index], sd.material,
                                                           newId(), &m_store);
        return def;
    };
    // Polygons named directly come first, so a polygon's own appearance beats its geometry's.
    for (int pass = 0; pass < 2; ++pass) {
        for (auto const& link : links) {
            SurfaceData& sd = *link.data;
            bool front = sd.appearance().isFront();
            auto apply = [&](std::string_view target, TextureTargetDefinition* tex, bool material,
                             std::size_t index) {
                if (pass == 0) {
                    if (Polygon* p = polygons.find(target))
                        assign(*p, link.theme, front, tex,
                               material ? materialDef(sd, index) : nullptr);
                    return;
                }
                if (polygons.find(target))
                    return;
                if (Geometry* g = geometries.find(target))
                    assignToGeometry(*g, link.theme, front, tex,
                                     material ? materialDef(sd, index) : nullptr);
                else
                    m_diagnostics.warn("appearance target '" + std::string(target) +
                                       "' is not a polygon or geometry");
            };
            for (TextureTargetDefinition* def : sd.textureTargets)
                apply(def->getTargetID(), def, false, 0);
            for (std::size_t i = 0; i < sd.materialTargets.size(); ++i)
                apply(sd.materialTargets[i], nullptr, true, i);
        }
    }
}

} // namespace citygml
