#include "ModelBuilder.h"

#include "ModelBuilderTypes.h"
#include "Numbers.h"
#include "PathIndex.h"

#include <algorithm>
#include <atomic>
#include <cstring>

namespace citygml {

namespace {

using Sym = ElementSym;

std::string lower(std::string_view s) {
    std::string out(s);
    for (char& c : out)
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    return out;
}

bool isGml(char const* uri) {
    return uri && (std::strcmp(uri, "http://www.opengis.net/gml") == 0 ||
                   std::strcmp(uri, "http://www.opengis.net/gml/3.2") == 0);
}

bool isXlink(char const* uri) {
    return uri && std::strcmp(uri, "http://www.w3.org/1999/xlink") == 0;
}

std::string_view value(XmlAttribute const& a) {
    return {a.valueBegin, static_cast<std::size_t>(a.valueEnd - a.valueBegin)};
}

// Finds an attribute by local name; `ns` 0 = no namespace, 1 = gml, 2 = xlink.
XmlAttribute const* find(XmlAttribute const* attrs, int count, char const* name, int ns) {
    for (int i = 0; i < count; ++i) {
        XmlAttribute const& a = attrs[i];
        if (std::strcmp(a.localName, name) != 0)
            continue;
        if ((ns == 0 && !a.uri) || (ns == 1 && isGml(a.uri)) || (ns == 2 && isXlink(a.uri)))
            return &a;
    }
    return nullptr;
}

std::string_view stripHash(std::string_view s) {
    s = Numbers::trim(s);
    if (auto hash = s.find('#'); hash != std::string_view::npos)
        s.remove_prefix(hash + 1);
    return s;
}

Sym appSym(std::string_view n) {
    static constexpr std::pair<std::string_view, Sym> rows[] = {
        {"Appearance", Sym::Appearance},
        {"theme", Sym::Theme},
        {"surfaceDataMember", Sym::SurfaceDataMember},
        {"surfaceData", Sym::SurfaceDataMember},
        {"X3DMaterial", Sym::X3DMaterial},
        {"ParameterizedTexture", Sym::ParameterizedTexture},
        {"GeoreferencedTexture", Sym::GeoreferencedTexture},
        {"imageURI", Sym::ImageUri},
        {"mimeType", Sym::MimeType},
        {"wrapMode", Sym::WrapMode},
        {"isFront", Sym::IsFront},
        {"target", Sym::Target},
        {"textureCoordinates", Sym::TextureCoordinates},
        {"TextureAssociation", Sym::TextureAssociation},
        {"diffuseColor", Sym::DiffuseColor},
        {"emissiveColor", Sym::EmissiveColor},
        {"specularColor", Sym::SpecularColor},
        {"ambientIntensity", Sym::AmbientIntensity},
        {"shininess", Sym::Shininess},
        {"transparency", Sym::Transparency},
        {"isSmooth", Sym::IsSmooth},
    };
    for (auto const& [name, sym] : rows)
        if (name == n)
            return sym;
    return Sym::None;
}

Sym gmlSym(std::string_view n) {
    static constexpr std::pair<std::string_view, Sym> rows[] = {
        {"LinearRing", Sym::LinearRing},    {"exterior", Sym::Exterior},
        {"outerBoundaryIs", Sym::Exterior}, {"interior", Sym::Interior},
        {"innerBoundaryIs", Sym::Interior}, {"pos", Sym::Pos},
        {"posList", Sym::PosList},          {"coordinates", Sym::Coordinates},
        {"boundedBy", Sym::BoundedBy},      {"Envelope", Sym::Envelope},
        {"lowerCorner", Sym::LowerCorner},  {"upperCorner", Sym::UpperCorner},
    };
    for (auto const& [name, sym] : rows)
        if (name == n)
            return sym;
    if (Vocabulary::isPolygon(n))
        return Sym::Polygon;
    if (Vocabulary::geometryType(n) != Geometry::GeometryType::GT_Unknown)
        return Sym::Geometry;
    return Sym::None;
}

Sym genSym(std::string_view n, AttributeType& type) {
    std::string l = lower(n);
    if (l == "genericattributeset") {
        type = AttributeType::String;
        return Sym::GenericSet;
    }
    if (l == "name")
        return Sym::GenericName;
    if (l == "value")
        return Sym::GenericValue;
    static constexpr std::pair<std::string_view, AttributeType> rows[] = {
        {"stringattribute", AttributeType::String}, {"intattribute", AttributeType::Integer},
        {"doubleattribute", AttributeType::Double}, {"measureattribute", AttributeType::Double},
        {"dateattribute", AttributeType::Date},     {"uriattribute", AttributeType::Uri},
        {"codeattribute", AttributeType::String},
    };
    for (auto const& [name, t] : rows)
        if (name == l) {
            type = t;
            return Sym::GenericAttribute;
        }
    return Sym::None;
}

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

ModelBuilder::ModelBuilder(ParserParams const& params, std::shared_ptr<TesselatorBase> tesselator,
                           std::shared_ptr<CityGMLLogger> logger)
    : m_params(params), m_tesselator(std::move(tesselator)), m_logger(std::move(logger)),
      m_model(std::make_shared<CityModel>()), m_store(*m_model->m_arena),
      m_pending(std::make_unique<PendingTarget>()) {
    m_frames.reserve(64);
}

ModelBuilder::~ModelBuilder() = default;

ModelBuilder::ElementInfo const& ModelBuilder::lookup(char const* localName, char const* prefix,
                                                      char const* uri) {
    // libxml2 interns names and namespace URIs in the parser's dictionary, which lives as long
    // as this builder's parse: within it, equal addresses mean equal names.
    Key key{localName, prefix, uri};
    auto it = m_infos.find(key);
    if (it != m_infos.end())
        return *it->second;
    auto info = std::make_unique<ElementInfo>();
    info->localName = localName;
    info->prefix = prefix ? prefix : "";
    info->uri = uri ? uri : "";
    info->ns = Vocabulary::namespaceInfo(info->uri);
    std::string_view name(info->localName);
    if (info->ns.prefix)
        info->tag = std::string(info->ns.prefix) + ":" + lower(name);
    else if (prefix)
        info->tag = lower(prefix) + ":" + lower(name);
    else
        info->tag = lower(name);
    if (name.size() > 3 && name.compare(0, 3, "lod") == 0 && name[3] >= '0' && name[3] <= '4')
        info->lod = static_cast<signed char>(name[3] - '0');

    Module m = info->ns.module;
    constexpr std::string_view implicitProperty = "ImplicitRepresentation";
    if ((name.size() >= implicitProperty.size() &&
         name.substr(name.size() - implicitProperty.size()) == implicitProperty) ||
        name == "ImplicitGeometry")
        info->sym = Sym::Implicit;
    else if (m == Module::Gml) {
        info->sym = gmlSym(name);
        if (info->sym == Sym::Geometry) {
            info->geometryType = Vocabulary::geometryType(name);
            info->internedTag = Vocabulary::internTag(info->tag);
        } else if (info->sym == Sym::Polygon) {
            info->internedTag = Vocabulary::internTag(info->tag);
        }
    } else if (m == Module::App) {
        info->sym = appSym(name);
    } else if (m == Module::Core && name == "CityModel") {
        info->sym = Sym::CityModel;
    } else if (m == Module::Gen && genSym(name, info->attributeType) != Sym::None) {
        info->sym = genSym(name, info->attributeType);
    } else if (m == Module::Dem && name == "lod") {
        info->sym = Sym::DemLod;
    } else if ((info->objectType = Vocabulary::cityObjectType(m, name)) !=
               CityObject::CityObjectsType::COT_Unknown) {
        info->sym = Sym::CityObject;
        info->internedTag = Vocabulary::internTag(info->tag);
    }
    ElementInfo const& ref = *info;
    m_infos[key] = std::move(info);
    return ref;
}

std::string ModelBuilder::newId() {
    // A space cannot occur in a gml:id, so these never collide with the document's ids. The
    // counter is shared by all loads of the process, because callers cache appearances by id
    // across files.
    static std::atomic<unsigned long long> counter{0};
    return "__kolt_ " + std::to_string(counter.fetch_add(1, std::memory_order_relaxed));
}

std::string_view ModelBuilder::modelId(std::string_view documentId) {
    return m_store.copy(documentId.empty() ? std::string_view(newId()) : documentId);
}

std::string_view ModelBuilder::idFromPath(std::string_view path, std::string_view documentId) {
    // The step ends in "[id]".
    if (documentId.empty() || path.size() < documentId.size() + 2)
        return modelId(documentId);
    return path.substr(path.size() - documentId.size() - 2, documentId.size());
}

AttributesMap& ModelBuilder::attributesOf(Object& object) {
    if (!object.m_attributes)
        object.m_attributes = m_store.create<AttributesMap>();
    return *object.m_attributes;
}

Envelope& ModelBuilder::envelopeOf(FeatureObject& object) {
    if (!object.m_envelope)
        object.m_envelope = m_store.create<Envelope>();
    return *object.m_envelope;
}

void ModelBuilder::warn(std::string const& message) const {
    if (m_logger && m_logger->isEnabledFor(CityGMLLogger::LOGLEVEL::LL_WARNING))
        m_logger->log(CityGMLLogger::LOGLEVEL::LL_WARNING, message);
}

void ModelBuilder::startText(std::size_t depth) {
    m_collect = true;
    m_textDepth = depth;
    m_text.clear();
}

// The view stays valid until the next element starts; the buffer keeps its capacity, so text
// elements cost no allocation each.
bool ModelBuilder::takeText(std::size_t depth, std::string_view& out) {
    if (!m_collect || m_textDepth != depth)
        return false;
    m_collect = false;
    out = m_text;
    return true;
}

void ModelBuilder::characters(char const* text, std::size_t length) {
    if (m_collect && m_skipDepth == 0)
        m_text.append(text, length);
}

void ModelBuilder::startElement(char const* localName, char const* prefix, char const* uri,
                                XmlAttribute const* attributes, int count) {
    if (m_skipDepth > 0) {
        ++m_skipDepth;
        return;
    }
    // A text-only property turns out to be structured as soon as it has a child.
    if (m_collect)
        m_collect = false;

    ElementInfo const& info = lookup(localName, prefix, uri);
    if (info.ns.version > 0 && m_model->m_version == 0 && info.ns.module != Module::Other) {
        m_model->m_version = info.ns.version;
    }

    XmlAttribute const* idAttr = find(attributes, count, "id", 1);
    std::string_view docId = idAttr ? value(*idAttr) : std::string_view();

    Frame frame;
    frame.info = &info;
    frame.sym = info.sym;
    frame.pathStart = m_path.size();
    frame.lod = info.lod;
    frame.dimension = m_frames.empty() ? 3 : m_frames.back().dimension;
    if (XmlAttribute const* dim = find(attributes, count, "srsDimension", 0)) {
        double d = 0;
        if (Numbers::parseOne(Numbers::trim(value(*dim)), d) && (d == 2 || d == 3))
            frame.dimension = static_cast<signed char>(d);
    }
    m_path += info.tag;
    if (!docId.empty()) {
        m_path += '[';
        m_path.append(docId);
        m_path += ']';
    }
    m_path += '\\';
    frame.pathEnd = m_path.size();

    XmlAttribute const* srs = isGml(uri) ? find(attributes, count, "srsName", 0) : nullptr;
    // Kept in the model; most documents repeat one name, which is then stored once.
    std::string_view srsName;
    if (srs) {
        std::string_view text = value(*srs);
        srsName = text == m_documentSrsName ? m_documentSrsName : m_store.copy(text);
    }
    if (!srsName.empty() && info.sym != Sym::Envelope) {
        if (m_documentSrsName.empty())
            m_documentSrsName = srsName;
        if (!m_objects.empty() && m_objects.back().firstSrsName.empty())
            m_objects.back().firstSrsName = srsName;
    }

    Sym parentSym = m_frames.empty() ? Sym::None : m_frames.back().sym;
    std::size_t depth = m_frames.size();
    // A feature of an application domain extension stands where city objects stand; its
    // namespace is unknown, but it is a city object all the same.
    bool adeFeature = info.sym == Sym::None && info.ns.module == Module::Other && uri &&
                      localName[0] >= 'A' && localName[0] <= 'Z' && !m_frames.empty() &&
                      m_frames.back().info->ns.module == Module::Core &&
                      m_frames.back().info->localName == "cityObjectMember";
    if (adeFeature)
        frame.sym = Sym::CityObject;
    m_frames.push_back(frame);
    Frame& f = m_frames.back();

    switch (f.sym) {
    case Sym::CityModel:
        if (!docId.empty()) {
            m_model->m_ownedId = std::string(docId);
            m_model->m_id = m_model->m_ownedId;
        }
        m_model->m_coreNamespace = info.uri;
        m_model->m_version = info.ns.version;
        break;
    case Sym::CityObject:
        startCityObject(info, docId);
        break;
    case Sym::Geometry:
        if (m_polygon || !startGeometry(info, docId, srsName))
            m_skipDepth = 1;
        break;
    case Sym::Polygon:
        if (m_polygon || !startPolygon(info, modelId(docId)))
            m_skipDepth = 1;
        break;
    case Sym::LinearRing:
        if (m_polygon && !m_inRing && (parentSym == Sym::Exterior || parentSym == Sym::Interior)) {
            m_inRing = true;
            m_ringExterior = parentSym == Sym::Exterior;
            m_ringBad = false;
            m_ringId = modelId(docId);
            m_ringVertices.clear();
            f.sym = Sym::LinearRing;
        } else {
            f.sym = Sym::None;
        }
        break;
    case Sym::Pos:
    case Sym::PosList:
    case Sym::Coordinates:
        if (m_inRing || m_envelopeOwner) {
            startText(depth);
            if (info.sym == Sym::Coordinates) {
                auto one = [&](char const* name, char fallback) {
                    XmlAttribute const* a = find(attributes, count, name, 0);
                    std::string_view v = a ? value(*a) : std::string_view();
                    return v.size() == 1 ? v[0] : fallback;
                };
                f.cs = one("cs", ',');
                f.ts = one("ts", ' ');
                f.decimal = one("decimal", '.');
            }
        }
        break;
    case Sym::BoundedBy:
        if (parentSym == Sym::CityObject && !m_objects.empty())
            m_envelopeOwner = m_objects.back().object;
        else if (parentSym == Sym::CityModel)
            m_envelopeOwner = m_model.get();
        m_envelopeCorner = 0;
        break;
    case Sym::Envelope:
        if (m_envelopeOwner && srs)
            envelopeOf(*m_envelopeOwner).m_srsName = srsName;
        break;
    case Sym::LowerCorner:
    case Sym::UpperCorner:
        if (m_envelopeOwner)
            startText(depth);
        break;
    case Sym::GenericAttribute:
    case Sym::GenericSet: {
        GenericAttribute g;
        g.type = info.attributeType;
        g.isSet = info.sym == Sym::GenericSet;
        g.depth = depth;
        if (XmlAttribute const* n = find(attributes, count, "name", 0))
            g.name = std::string(value(*n));
        m_generic.push_back(std::move(g));
        break;
    }
    case Sym::GenericName:
    case Sym::GenericValue:
        if (!m_generic.empty() && m_generic.back().depth + 1 == depth)
            startText(depth);
        break;
    case Sym::DemLod:
        if (parentSym == Sym::CityObject)
            startText(depth);
        break;
    case Sym::Appearance:
        m_inAppearance = true;
        m_theme.clear();
        m_appearanceData.clear();
        m_appearanceRefs.clear();
        break;
    case Sym::SurfaceDataMember:
        if (m_inAppearance)
            if (XmlAttribute const* href = find(attributes, count, "href", 2))
                m_appearanceRefs.push_back(m_store.copy(stripHash(value(*href))));
        break;
    case Sym::X3DMaterial:
    case Sym::ParameterizedTexture:
    case Sym::GeoreferencedTexture: {
        SurfaceData sd;
        std::string id = docId.empty() ? newId() : std::string(docId);
        if (info.sym == Sym::X3DMaterial)
            sd.material = std::make_shared<Material>(id);
        else
            sd.texture = std::make_shared<Texture>(id, info.localName);
        if (!docId.empty())
            m_surfaceDataById.emplace(id, m_surfaceData.size());
        if (m_inAppearance)
            m_appearanceData.push_back(m_surfaceData.size());
        m_currentData = static_cast<long>(m_surfaceData.size());
        m_surfaceData.push_back(std::move(sd));
        break;
    }
    case Sym::TextureAssociation:
        if (m_currentData >= 0)
            m_pending->start({});
        break;
    case Sym::Target:
        if (m_currentData >= 0) {
            XmlAttribute const* uriAttr = find(attributes, count, "uri", 0);
            XmlAttribute const* href = find(attributes, count, "href", 2);
            if (uriAttr && m_surfaceData[static_cast<std::size_t>(m_currentData)].texture) {
                flushPendingTarget();
                m_pending->start(m_store.copy(stripHash(value(*uriAttr))));
                f.ownsPending = true;
            } else if (href) {
                f.href = m_store.copy(stripHash(value(*href)));
            } else {
                startText(depth);
            }
        }
        break;
    case Sym::TextureCoordinates:
        if (m_pending->active) {
            XmlAttribute const* ring = find(attributes, count, "ring", 0);
            f.href = ring ? m_store.copy(stripHash(value(*ring))) : std::string_view();
            startText(depth);
        }
        break;
    case Sym::Theme:
    case Sym::ImageUri:
    case Sym::MimeType:
    case Sym::WrapMode:
    case Sym::IsFront:
    case Sym::DiffuseColor:
    case Sym::EmissiveColor:
    case Sym::SpecularColor:
    case Sym::AmbientIntensity:
    case Sym::Shininess:
    case Sym::Transparency:
    case Sym::IsSmooth:
        startText(depth);
        break;
    case Sym::Implicit:
        // Implicit geometries are prototypes placed elsewhere; their polygons are not read.
        m_skipDepth = 1;
        break;
    case Sym::None:
        if (parentSym == Sym::CityObject || parentSym == Sym::CityModel) {
            f.sym = Sym::SimpleProperty;
            startText(depth);
        }
        break;
    default:
        break;
    }

    // An xlinked member of a geometry shares a polygon written elsewhere in the document.
    if (m_skipDepth == 0 && (f.sym == Sym::None || f.sym == Sym::Exterior) &&
        !m_geometries.empty() && !m_polygon && m_geometries.back().second + 1 == depth)
        if (XmlAttribute const* href = find(attributes, count, "href", 2)) {
            Geometry* g = m_geometries.back().first;
            std::string_view id = stripHash(value(*href));
            m_sharedRefs.push_back({g, g->m_polygons.size(), m_sharedRefIds.size(), id.size()});
            m_sharedRefIds.append(id);
            g->m_polygons.push_back(m_store, nullptr);
        }
}

void ModelBuilder::endElement() {
    if (m_skipDepth > 0) {
        if (--m_skipDepth == 0 && !m_frames.empty()) {
            // The skipped element had a frame of its own; drop it with its path component.
            m_path.resize(m_frames.back().pathStart);
            m_frames.pop_back();
        }
        return;
    }
    if (m_frames.empty())
        return;
    std::size_t depth = m_frames.size() - 1;
    Frame& f = m_frames.back();
    std::string_view text;

    switch (f.sym) {
    case Sym::CityObject:
        if (!m_objects.empty() && m_objects.back().frame == depth) {
            // Without an srsName of its own, the envelope takes the first one met inside.
            ObjectFrame done = m_objects.back();
            m_objects.pop_back();
            if (!done.firstSrsName.empty() &&
                (!done.object->m_envelope || done.object->m_envelope->m_srsName.empty()))
                envelopeOf(*done.object).m_srsName = done.firstSrsName;
            if (!m_objects.empty() && m_objects.back().firstSrsName.empty())
                m_objects.back().firstSrsName = done.firstSrsName;
        }
        break;
    case Sym::Geometry:
        if (!m_geometries.empty() && m_geometries.back().second == depth)
            m_geometries.pop_back();
        break;
    case Sym::Polygon:
        if (m_polygon)
            endPolygon();
        if (f.ownsWrapper && !m_geometries.empty())
            m_geometries.pop_back();
        break;
    case Sym::LinearRing:
        endRing();
        break;
    case Sym::Pos:
    case Sym::PosList:
    case Sym::Coordinates:
        if (takeText(depth, text)) {
            if (m_inRing) {
                if (f.sym == Sym::Coordinates) {
                    m_numbers.clear();
                    int dim = 0;
                    if (!Numbers::parseCoordinates(text, f.cs, f.ts, f.decimal, m_numbers, dim) ||
                        (dim != 2 && dim != 3))
                        m_ringBad = true;
                    else
                        addRingCoordinates({}, dim, dim);
                } else {
                    addRingCoordinates(text, f.dimension, f.sym == Sym::Pos ? -1 : 0);
                }
            } else if (m_envelopeOwner) {
                endEnvelopePosition(f.sym, text);
            }
        }
        break;
    case Sym::LowerCorner:
    case Sym::UpperCorner:
        if (takeText(depth, text))
            endEnvelopePosition(f.sym, text);
        break;
    case Sym::BoundedBy:
        m_envelopeOwner = nullptr;
        break;
    case Sym::GenericName:
        if (takeText(depth, text) && !m_generic.empty())
            m_generic.back().name = std::string(Numbers::trim(text));
        break;
    case Sym::GenericValue:
        if (takeText(depth, text) && !m_generic.empty())
            m_generic.back().value = std::string(Numbers::trim(text));
        break;
    case Sym::GenericAttribute:
    case Sym::GenericSet:
        endGenericAttribute();
        break;
    case Sym::DemLod:
        if (takeText(depth, text) && !m_objects.empty()) {
            double lod = 0;
            if (Numbers::parseOne(Numbers::trim(text), lod) && lod >= 0 && lod <= 4)
                m_objects.back().reliefLod = static_cast<int>(lod);
            attributesOf(*m_objects.back().object)["lod"] =
                AttributeValue(std::string(Numbers::trim(text)));
        }
        break;
    case Sym::SimpleProperty:
        if (takeText(depth, text)) {
            std::string_view t = Numbers::trim(text);
            FeatureObject* owner = m_objects.empty() ? static_cast<FeatureObject*>(m_model.get())
                                                     : m_objects.back().object;
            if (!t.empty() && (m_objects.empty() || m_objects.back().frame + 1 == depth))
                attributesOf(*owner)[f.info->localName] = AttributeValue(std::string(t));
        }
        break;
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
        if (takeText(depth, text))
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
        takeText(depth, text);
        endTarget(f, text);
        break;
    case Sym::TextureCoordinates:
        if (takeText(depth, text) && m_pending->active) {
            m_numbers.clear();
            if (Numbers::parseList(text, m_numbers) && m_numbers.size() % 2 == 0) {
                std::size_t n = m_numbers.size() / 2;
                TVec2f* pairs = m_store.array<TVec2f>(n);
                for (std::size_t i = 0; i < n; ++i)
                    pairs[i] = TVec2f(static_cast<float>(m_numbers[2 * i]),
                                      static_cast<float>(m_numbers[2 * i + 1]));
                m_pending->coords.push_back(
                    m_store.create<TextureCoordinates>(modelId({}), f.href, pairs, n));
            } else {
                warn("texture coordinates of ring '" + std::string(f.href) +
                     "' are not pairs of numbers");
            }
        }
        break;
    default:
        if (m_currentData >= 0 && takeText(depth, text)) {
            SurfaceData& sd = m_surfaceData[static_cast<std::size_t>(m_currentData)];
            Appearance* app = sd.material ? static_cast<Appearance*>(sd.material.get())
                                          : static_cast<Appearance*>(sd.texture.get());
            std::string_view t = Numbers::trim(text);
            bool ok = true;
            switch (f.sym) {
            case Sym::IsFront:
                app->m_isFront = parseBool(t);
                break;
            case Sym::ImageUri:
                if (sd.texture)
                    sd.texture->m_url = std::string(t);
                break;
            case Sym::MimeType:
                if (sd.texture)
                    sd.texture->m_mimeType = std::string(t);
                break;
            case Sym::WrapMode:
                if (sd.texture)
                    sd.texture->m_wrapMode = std::string(t);
                break;
            case Sym::DiffuseColor:
                ok = !sd.material || parseColor(t, sd.material->m_diffuse);
                break;
            case Sym::EmissiveColor:
                ok = !sd.material || parseColor(t, sd.material->m_emissive);
                break;
            case Sym::SpecularColor:
                ok = !sd.material || parseColor(t, sd.material->m_specular);
                break;
            case Sym::AmbientIntensity:
                ok = !sd.material || parseScalar(t, sd.material->m_ambientIntensity);
                break;
            case Sym::Shininess:
                ok = !sd.material || parseScalar(t, sd.material->m_shininess);
                break;
            case Sym::Transparency:
                ok = !sd.material || parseScalar(t, sd.material->m_transparency);
                break;
            case Sym::IsSmooth:
                if (sd.material)
                    sd.material->m_isSmooth = parseBool(t);
                break;
            default:
                break;
            }
            if (!ok)
                warn("material '" + std::string(app->getId()) + "' has an unreadable " +
                     f.info->localName);
        }
        break;
    }
    if (m_collect && m_textDepth >= depth)
        m_collect = false;
    m_path.resize(m_frames.back().pathStart);
    m_frames.pop_back();
}

void ModelBuilder::startCityObject(ElementInfo const& info, std::string_view documentId) {
    std::string const* tag = info.internedTag;
    auto type = info.objectType;
    if (!tag) {
        m_model->m_extraTags.push_back(info.tag);
        tag = &m_model->m_extraTags.back();
        type = CityObject::CityObjectsType::COT_Other;
    }
    std::size_t depth = m_frames.size() - 1;
    Frame const& f = m_frames.back();
    std::string_view path = m_store.copy(std::string_view(m_path).substr(
        m_objects.empty() ? f.pathStart : m_frames[m_objects.back().frame].pathEnd));
    CityObject* object = m_store.create<CityObject>(idFromPath(path, documentId), type, tag);
    object->m_path = path;
    if (m_objects.empty())
        m_model->m_roots.push_back(object);
    else
        m_objects.back().object->m_children.push_back(m_store, object);
    object->m_index = m_model->m_index.get();
    m_objects.push_back({object, depth, -1, {}});
}

bool ModelBuilder::startGeometry(ElementInfo const& info, std::string_view documentId,
                                 std::string_view srs) {
    std::size_t depth = m_frames.size() - 1;
    bool underObject = !m_objects.empty() && (m_geometries.empty() ||
                                              m_objects.back().frame > m_geometries.back().second);
    if (!underObject && m_geometries.empty())
        return false;
    Geometry* geometry = nullptr;
    std::string_view path(m_path);
    if (underObject) {
        ObjectFrame const& owner = m_objects.back();
        int lod = -1;
        for (std::size_t i = depth; i > owner.frame && lod < 0; --i)
            lod = m_frames[i].lod;
        if (lod < 0)
            lod = owner.reliefLod >= 0 ? owner.reliefLod : 0;
        if (static_cast<unsigned>(lod) < m_params.minLOD ||
            static_cast<unsigned>(lod) > m_params.maxLOD)
            return false;
        std::string_view own = m_store.copy(path.substr(m_frames[owner.frame].pathEnd));
        geometry = m_store.create<Geometry>(idFromPath(own, documentId), info.geometryType,
                                            static_cast<unsigned>(lod), &m_store);
        geometry->m_path = own;
        m_objects.back().object->m_geometries.push_back(m_store, geometry);
    } else {
        Geometry* parent = m_geometries.back().first;
        std::string_view own = m_store.copy(path.substr(m_frames.back().pathStart));
        geometry = m_store.create<Geometry>(idFromPath(own, documentId), info.geometryType,
                                            parent->m_lod, &m_store);
        geometry->m_path = own;
        geometry->m_srsName = parent->m_srsName;
        parent->m_children.push_back(m_store, geometry);
    }
    geometry->m_tag = info.internedTag;
    if (!srs.empty())
        geometry->m_srsName = srs;
    geometry->m_index = m_model->m_index.get();
    if (!geometry->hasGeneratedId())
        m_namedGeometries.push_back(geometry);
    m_geometries.emplace_back(geometry, depth);
    return true;
}

bool ModelBuilder::startPolygon(ElementInfo const& info, std::string_view id) {
    bool underObject = !m_objects.empty() && (m_geometries.empty() ||
                                              m_objects.back().frame > m_geometries.back().second);
    if (underObject) {
        // A polygon that a feature property holds directly becomes a geometry of its own.
        ElementInfo wrapper = info;
        wrapper.geometryType = Geometry::GeometryType::GT_Polygon;
        if (!startGeometry(wrapper, {}, {}))
            return false;
        m_frames.back().ownsWrapper = true;
    } else if (m_geometries.empty()) {
        return false;
    }
    m_polygon = m_store.create<Polygon>(id, &m_store);
    return true;
}

} // namespace citygml
