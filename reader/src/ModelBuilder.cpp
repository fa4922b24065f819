#include "ModelBuilder.h"

#include "Access.h"
#include "IdSource.h"
#include "Numbers.h"
#include "PathIndex.h"

#include <algorithm>

namespace citygml {

using detail::Access;
using Ns = AttributeList::Ns;

ModelBuilder::ModelBuilder(ParserParams const& params, std::shared_ptr<TesselatorBase> tesselator,
                           std::shared_ptr<CityGMLLogger> logger)
    : m_params(params), m_tesselator(std::move(tesselator)), m_diagnostics(std::move(logger)),
      m_model(std::make_shared<CityModel>()), m_store(Access::store(*m_model)),
      m_polygons(m_store, m_diagnostics, m_params.tesselate ? m_tesselator.get() : nullptr),
      m_envelope(m_store, m_diagnostics), m_generic(m_store), m_appearance(m_store, m_diagnostics) {
    m_frames.reserve(64);
}

ModelBuilder::~ModelBuilder() = default;

std::string_view ModelBuilder::modelId(std::string_view documentId) {
    return m_store.copy(documentId.empty() ? std::string_view(IdSource::next()) : documentId);
}

std::string_view ModelBuilder::idFromPath(std::string_view path, std::string_view documentId) {
    // The step ends in "[id]".
    if (documentId.empty() || path.size() < documentId.size() + 2)
        return modelId(documentId);
    return path.substr(path.size() - documentId.size() - 2, documentId.size());
}

FeatureObject& ModelBuilder::owner() {
    return m_objects.empty() ? static_cast<FeatureObject&>(*m_model) : *m_objects.back().object;
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
                                XmlAttribute const* attributes, int count, StartLine line) {
    if (m_skipDepth > 0) {
        ++m_skipDepth;
        return;
    }
    // A text-only property turns out to be structured as soon as it has a child.
    m_collect = false;

    ElementInfo const& info = m_elements.lookup(localName, prefix, uri);
    if (info.ns.version > 0 && m_model->getCityGMLVersion() == 0 && info.ns.module != Module::Other)
        Access::setVersion(*m_model, info.ns.version);

    AttributeList attrs(attributes, count);
    std::string_view docId = attrs.value("id", Ns::Gml);

    Frame frame;
    frame.info = &info;
    frame.sym = info.sym;
    // Only the elements that may be dropped need their line.
    if (info.sym == Sym::Geometry || info.sym == Sym::Polygon || info.sym == Sym::LinearRing ||
        info.sym == Sym::Implicit)
        frame.line = line();
    frame.pathStart = m_path.size();
    frame.lod = info.lod;
    frame.dimension = m_frames.empty() ? 3 : m_frames.back().dimension;
    if (XmlAttribute const* dim = attrs.find("srsDimension", Ns::None)) {
        double d = 0;
        if (Numbers::parseOne(Numbers::trim(AttributeList::text(*dim)), d) && (d == 2 || d == 3))
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

    XmlAttribute const* srs = AttributeList::isGml(uri) ? attrs.find("srsName", Ns::None) : nullptr;
    // Kept in the model; most documents repeat one name, which is then stored once.
    std::string_view srsName;
    if (srs) {
        std::string_view text = AttributeList::text(*srs);
        srsName = text == m_documentSrsName ? m_documentSrsName : m_store.copy(text);
    }
    if (!srsName.empty() && info.sym != Sym::Envelope) {
        if (m_documentSrsName.empty())
            m_documentSrsName = srsName;
        if (!m_objects.empty() && m_objects.back().firstSrsName.empty())
            m_objects.back().firstSrsName = srsName;
    }

    Sym parentSym = m_frames.empty() ? Sym::None : m_frames.back().sym;
    // A feature of an application domain extension stands where city objects stand; its
    // namespace is unknown, but it is a city object all the same.
    if (info.sym == Sym::None && info.ns.module == Module::Other && uri && localName[0] >= 'A' &&
        localName[0] <= 'Z' && !m_frames.empty() &&
        m_frames.back().info->ns.module == Module::Core &&
        m_frames.back().info->localName == "cityObjectMember")
        frame.sym = Sym::CityObject;
    m_frames.push_back(frame);
    Frame& f = m_frames.back();
    if (f.sym == Sym::Envelope) {
        if (m_envelope.active() && srs)
            m_envelope.srsName(srsName);
    } else {
        start(f, parentSym, docId, srsName, attrs);
    }

    // An xlinked member of a geometry shares a polygon written elsewhere in the document.
    if (m_skipDepth == 0 && (f.sym == Sym::None || f.sym == Sym::Exterior) &&
        !m_geometries.empty() && !m_polygons.inPolygon() &&
        m_geometries.back().second + 1 == m_frames.size() - 1)
        if (XmlAttribute const* href = attrs.find("href", Ns::Xlink))
            addSharedPolygon(AttributeList::text(*href), line());
}

void ModelBuilder::start(Frame& f, Sym parentSym, std::string_view docId, std::string_view srsName,
                         AttributeList attrs) {
    ElementInfo const& info = *f.info;
    std::size_t depth = m_frames.size() - 1;
    if (AppearanceCollector::handles(f.sym)) {
        if (m_appearance.start(info, docId, attrs, f.appearance))
            startText(depth);
        return;
    }
    switch (f.sym) {
    case Sym::CityModel:
        if (!docId.empty())
            Access::setId(*m_model, docId);
        Access::setNamespace(*m_model, info.uri, info.ns.version);
        break;
    case Sym::CityObject:
        startCityObject(info, docId);
        break;
    case Sym::Geometry:
        if (m_polygons.inPolygon())
            m_diagnostics.dropped("geometry", docId, "inside a polygon", f.line);
        if (m_polygons.inPolygon() || !startGeometry(info, docId, srsName))
            m_skipDepth = 1;
        break;
    case Sym::Polygon:
        if (m_polygons.inPolygon())
            m_diagnostics.dropped("polygon", docId, "inside another polygon", f.line);
        if (m_polygons.inPolygon() || !startPolygon(info, docId, f.line))
            m_skipDepth = 1;
        break;
    case Sym::LinearRing:
        if (m_polygons.inPolygon() && !m_polygons.inRing() &&
            (parentSym == Sym::Exterior || parentSym == Sym::Interior)) {
            m_polygons.startRing(parentSym == Sym::Exterior, modelId(docId), docId, f.line);
        } else {
            if (m_polygons.inPolygon())
                m_diagnostics.dropped("ring", docId, "not the child of an exterior or interior",
                                      f.line);
            f.sym = Sym::None;
        }
        break;
    case Sym::Pos:
    case Sym::PosList:
    case Sym::Coordinates:
        if (m_polygons.inRing() || m_envelope.active()) {
            startText(depth);
            if (f.sym == Sym::Coordinates) {
                auto one = [&](char const* name, char fallback) {
                    std::string_view v = attrs.value(name, Ns::None);
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
            m_envelope.start(m_objects.back().object);
        else
            m_envelope.start(parentSym == Sym::CityModel ? m_model.get() : nullptr);
        break;
    case Sym::LowerCorner:
    case Sym::UpperCorner:
        if (m_envelope.active())
            startText(depth);
        break;
    case Sym::GenericAttribute:
    case Sym::GenericSet:
        m_generic.start(info.attributeType, f.sym == Sym::GenericSet, depth,
                        attrs.value("name", Ns::None));
        break;
    case Sym::GenericName:
    case Sym::GenericValue:
        if (m_generic.ownsChildAt(depth))
            startText(depth);
        break;
    case Sym::DemLod:
        if (parentSym == Sym::CityObject)
            startText(depth);
        break;
    case Sym::Implicit:
        // Implicit geometries are prototypes placed elsewhere; their polygons are not read.
        m_diagnostics.dropped("geometry", docId, "implicit geometries are not read", f.line);
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
    end(m_frames.back(), depth);
    if (m_collect && m_textDepth >= depth)
        m_collect = false;
    m_path.resize(m_frames.back().pathStart);
    m_frames.pop_back();
}

void ModelBuilder::end(Frame& f, std::size_t depth) {
    std::string_view text;
    if (AppearanceCollector::handles(f.sym)) {
        bool hasText = takeText(depth, text);
        m_appearance.end(*f.info, hasText, text, f.appearance);
        return;
    }
    switch (f.sym) {
    case Sym::CityObject:
        endCityObject(depth);
        break;
    case Sym::Geometry:
        if (!m_geometries.empty() && m_geometries.back().second == depth)
            m_geometries.pop_back();
        break;
    case Sym::Polygon:
        if (m_polygons.inPolygon())
            endPolygon();
        if (f.ownsWrapper && !m_geometries.empty())
            m_geometries.pop_back();
        break;
    case Sym::LinearRing:
        m_polygons.endRing();
        break;
    case Sym::Pos:
    case Sym::PosList:
    case Sym::Coordinates:
        endPositions(f, depth);
        break;
    case Sym::LowerCorner:
        if (takeText(depth, text))
            m_envelope.lowerCorner(text);
        break;
    case Sym::UpperCorner:
        if (takeText(depth, text))
            m_envelope.upperCorner(text);
        break;
    case Sym::BoundedBy:
        m_envelope.end();
        break;
    case Sym::GenericName:
        if (takeText(depth, text))
            m_generic.name(text);
        break;
    case Sym::GenericValue:
        if (takeText(depth, text))
            m_generic.value(text);
        break;
    case Sym::GenericAttribute:
    case Sym::GenericSet:
        m_generic.end(owner());
        break;
    case Sym::DemLod:
        if (takeText(depth, text) && !m_objects.empty()) {
            double lod = 0;
            if (Numbers::parseOne(Numbers::trim(text), lod) && lod >= 0 && lod <= 4)
                m_objects.back().reliefLod = static_cast<int>(lod);
            Access::attributes(*m_objects.back().object, m_store)["lod"] =
                AttributeValue(std::string(Numbers::trim(text)));
        }
        break;
    case Sym::SimpleProperty:
        if (takeText(depth, text)) {
            std::string_view t = Numbers::trim(text);
            if (!t.empty() && (m_objects.empty() || m_objects.back().frame + 1 == depth))
                Access::attributes(owner(), m_store)[f.info->localName] =
                    AttributeValue(std::string(t));
        }
        break;
    default:
        break;
    }
}

void ModelBuilder::endPositions(Frame const& f, std::size_t depth) {
    std::string_view text;
    if (!takeText(depth, text))
        return;
    if (m_polygons.inRing()) {
        if (f.sym == Sym::Coordinates)
            m_polygons.coordinates(text, f.cs, f.ts, f.decimal);
        else if (f.sym == Sym::Pos)
            m_polygons.pos(text);
        else
            m_polygons.posList(text, f.dimension);
    } else if (m_envelope.active()) {
        if (f.sym == Sym::Coordinates)
            m_envelope.coordinates(text);
        else if (f.sym == Sym::Pos)
            m_envelope.pos(text);
        else
            m_envelope.posList(text);
    }
}

void ModelBuilder::startCityObject(ElementInfo const& info, std::string_view documentId) {
    std::string const* tag = info.internedTag;
    auto type = info.objectType;
    if (!tag) {
        tag = Access::addTag(*m_model, info.tag);
        type = CityObject::CityObjectsType::COT_Other;
    }
    std::size_t depth = m_frames.size() - 1;
    Frame const& f = m_frames.back();
    std::string_view path = m_store.copy(std::string_view(m_path).substr(
        m_objects.empty() ? f.pathStart : m_frames[m_objects.back().frame].pathEnd));
    CityObject* object = m_store.create<CityObject>(idFromPath(path, documentId), type, tag);
    Access::place(*object, path, Access::index(*m_model));
    if (m_objects.empty())
        Access::addRoot(*m_model, object);
    else
        Access::addChild(*m_objects.back().object, object, m_store);
    m_objects.push_back({object, depth, -1, {}});
}

void ModelBuilder::endCityObject(std::size_t depth) {
    if (m_objects.empty() || m_objects.back().frame != depth)
        return;
    // Without an srsName of its own, the envelope takes the first one met inside.
    ObjectFrame done = m_objects.back();
    m_objects.pop_back();
    if (!done.firstSrsName.empty() && done.object->getEnvelope().srsName().empty())
        Access::setSrsName(Access::envelope(*done.object, m_store), done.firstSrsName);
    if (!m_objects.empty() && m_objects.back().firstSrsName.empty())
        m_objects.back().firstSrsName = done.firstSrsName;
}

bool ModelBuilder::underObject() const {
    return !m_objects.empty() &&
           (m_geometries.empty() || m_objects.back().frame > m_geometries.back().second);
}

bool ModelBuilder::startGeometry(ElementInfo const& info, std::string_view documentId,
                                 std::string_view srs) {
    std::size_t depth = m_frames.size() - 1;
    bool direct = underObject();
    if (!direct && m_geometries.empty()) {
        m_diagnostics.dropped("geometry", documentId, "not inside a city object",
                              m_frames.back().line);
        return false;
    }
    Geometry* geometry = nullptr;
    std::string_view path(m_path);
    if (direct) {
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
        Access::place(*geometry, own, Access::index(*m_model));
        Access::addGeometry(*owner.object, geometry, m_store);
    } else {
        Geometry* parent = m_geometries.back().first;
        std::string_view own = m_store.copy(path.substr(m_frames.back().pathStart));
        geometry = m_store.create<Geometry>(idFromPath(own, documentId), info.geometryType,
                                            parent->getLOD(), &m_store);
        Access::place(*geometry, own, Access::index(*m_model));
        Access::setSrsName(*geometry, parent->getSRSName());
        Access::addChild(*parent, geometry, m_store);
    }
    Access::setTag(*geometry, info.internedTag);
    if (!srs.empty())
        Access::setSrsName(*geometry, srs);
    if (!geometry->hasGeneratedId())
        m_namedGeometries.push_back(geometry);
    m_geometries.emplace_back(geometry, depth);
    return true;
}

bool ModelBuilder::startPolygon(ElementInfo const& info, std::string_view documentId, int line) {
    std::string_view id = modelId(documentId);
    if (underObject()) {
        // A polygon that a feature property holds directly becomes a geometry of its own.
        ElementInfo wrapper = info;
        wrapper.geometryType = Geometry::GeometryType::GT_Polygon;
        if (!startGeometry(wrapper, {}, {}))
            return false;
        m_frames.back().ownsWrapper = true;
    } else if (m_geometries.empty()) {
        m_diagnostics.dropped("polygon", documentId, "not inside a city object or geometry", line);
        return false;
    }
    m_polygons.startPolygon(id, documentId, line);
    return true;
}

void ModelBuilder::endPolygon() {
    Polygon* polygon = m_polygons.endPolygon();
    if (!polygon || m_geometries.empty())
        return;
    Access::polygons(*m_geometries.back().first).push_back(m_store, polygon);
    if (!polygon->hasGeneratedId())
        m_namedPolygons.push_back(polygon);
}

void ModelBuilder::addSharedPolygon(std::string_view reference, int line) {
    Geometry* g = m_geometries.back().first;
    std::string_view id = AttributeList::referencedId(reference);
    ObjectList<Polygon*>& slots = Access::polygons(*g);
    m_sharedRefs.push_back({g, slots.size(), m_sharedRefIds.size(), id.size(), line});
    m_sharedRefIds.append(id);
    slots.push_back(m_store, nullptr);
}

void ModelBuilder::indexTargets() {
    // Files without references skip the id maps altogether.
    bool targets = m_appearance.hasTargets();
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

void ModelBuilder::resolveSharedPolygons() {
    for (auto& ref : m_sharedRefs) {
        std::string_view id(m_sharedRefIds.data() + ref.idOffset, ref.idLength);
        if (Polygon* polygon = m_polygonsById.find(id))
            Access::polygons(*ref.geometry)[ref.slot] = polygon;
        else
            m_diagnostics.warn("shared polygon '" + std::string(id) + "' is not in the document",
                               ref.line);
    }
}

void ModelBuilder::dropUnresolvedSlots() {
    std::vector<Geometry*> touched;
    for (auto const& ref : m_sharedRefs)
        touched.push_back(ref.geometry);
    std::sort(touched.begin(), touched.end());
    touched.erase(std::unique(touched.begin(), touched.end()), touched.end());
    for (Geometry* g : touched)
        Access::polygons(*g).removeNulls();
}

std::shared_ptr<CityModel> ModelBuilder::finish() {
    indexTargets();
    resolveSharedPolygons();
    m_appearance.resolve(m_polygonsById, m_geometriesById, *m_model);
    if (!m_documentSrsName.empty() && m_model->getEnvelope().srsName().empty())
        Access::setSrsName(Access::envelope(*m_model, m_store), m_documentSrsName);
    m_polygonsById.clear();
    m_geometriesById.clear();
    dropUnresolvedSlots();
    return std::move(m_model);
}

} // namespace citygml
