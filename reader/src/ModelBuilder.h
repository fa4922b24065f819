#pragma once

#include "IdTable.h"
#include "ObjectArena.h"
#include "SaxHandler.h"
#include "Vocabulary.h"

#include <citygml/CityGMLLogger.h>
#include <citygml/CityModel.h>
#include <citygml/ParserParams.h>
#include <citygml/TesselatorBase.h>

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace citygml {

enum class ElementSym : unsigned char;

// Turns the parser's events into a CityModel in one pass; references by id (shared polygons,
// appearance targets) are resolved in finish(), after the whole document has been read.
class ModelBuilder : public SaxHandler {
public:
    ModelBuilder(ParserParams const& params, std::shared_ptr<TesselatorBase> tesselator,
                 std::shared_ptr<CityGMLLogger> logger);
    ~ModelBuilder() override;

    void startElement(char const* localName, char const* prefix, char const* uri,
                      XmlAttribute const* attributes, int count) override;
    void endElement() override;
    void characters(char const* text, std::size_t length) override;

    std::shared_ptr<CityModel> finish();

private:
    using Sym = ElementSym;
    struct ElementInfo;
    struct Frame;
    struct ObjectFrame;
    struct SurfaceData;
    struct PendingTarget;
    struct GenericAttribute;
    struct SharedPolygonRef;
    struct ThemeLink;
    struct Key {
        char const* localName;
        char const* prefix;
        char const* uri;
        bool operator==(Key const& o) const {
            return localName == o.localName && prefix == o.prefix && uri == o.uri;
        }
    };
    struct KeyHash {
        std::size_t operator()(Key const& k) const {
            std::hash<void const*> h;
            return (h(k.localName) * 31 + h(k.prefix)) * 31 + h(k.uri);
        }
    };

    ElementInfo const& lookup(char const* localName, char const* prefix, char const* uri);
    std::string newId();
    AttributesMap& attributesOf(Object& object);
    Envelope& envelopeOf(FeatureObject& object);
    // The document's id kept in the model, or a generated one when there is none.
    std::string_view modelId(std::string_view documentId);
    void warn(std::string const& message) const;
    void startText(std::size_t depth);
    bool takeText(std::size_t depth, std::string_view& out);

    // `documentId` is the element's gml:id, empty when it has none.
    void startCityObject(ElementInfo const& info, std::string_view documentId);
    bool startGeometry(ElementInfo const& info, std::string_view documentId,
                       std::string_view srsName);
    // The id of an element whose path was just stored: a view into the path's last step.
    std::string_view idFromPath(std::string_view path, std::string_view documentId);
    bool startPolygon(ElementInfo const& info, std::string_view id);
    void endPolygon();
    void endRing();
    void addRingCoordinates(std::string_view text, int dimension, int tupleDimension);
    void endEnvelopePosition(Sym sym, std::string_view text);
    void endGenericAttribute();
    void endTarget(Frame const& frame, std::string_view text);
    void flushPendingTarget();
    static std::string_view stripHashText(std::string_view s);

    void assign(AppearanceTarget& target, std::string_view theme, bool front,
                TextureTargetDefinition* texture, MaterialTargetDefinition* material);
    void assignToGeometry(Geometry& g, std::string_view theme, bool front,
                          TextureTargetDefinition* texture, MaterialTargetDefinition* material);
    void resolveSharedPolygons();
    void dropUnresolvedSlots();
    void resolveAppearances();
    void indexTargets();

    ParserParams m_params;
    std::shared_ptr<TesselatorBase> m_tesselator;
    std::shared_ptr<CityGMLLogger> m_logger;
    std::shared_ptr<CityModel> m_model;
    // The model's storage, where every object, id and vertex read goes.
    ObjectArena& m_store;

    std::unordered_map<Key, std::unique_ptr<ElementInfo>, KeyHash> m_infos;
    std::vector<Frame> m_frames;
    std::size_t m_skipDepth = 0;
    std::string m_path;

    bool m_collect = false;
    std::size_t m_textDepth = 0;
    std::string m_text;
    std::vector<double> m_numbers;

    std::vector<ObjectFrame> m_objects;
    std::vector<std::pair<Geometry*, std::size_t>> m_geometries; // with frame index
    Polygon* m_polygon = nullptr;
    bool m_inRing = false;
    bool m_ringExterior = false;
    bool m_ringBad = false;
    std::string_view m_ringId;
    std::vector<TVec3d> m_ringVertices;
    FeatureObject* m_envelopeOwner = nullptr;
    int m_envelopeCorner = 0;

    std::vector<GenericAttribute> m_generic;

    std::vector<SurfaceData> m_surfaceData;
    std::unordered_map<std::string, std::size_t> m_surfaceDataById;
    std::vector<std::size_t> m_appearanceData;
    std::vector<std::string_view> m_appearanceRefs;
    std::string m_theme;
    bool m_inAppearance = false;
    long m_currentData = -1;
    std::unique_ptr<PendingTarget> m_pending;
    std::vector<ThemeLink> m_themeLinks;

    IdTable<Polygon> m_polygonsById;
    IdTable<Geometry> m_geometriesById;
    // Everything with an id of the document's own, in document order, for the tables above.
    std::vector<Polygon*> m_namedPolygons;
    std::vector<Geometry*> m_namedGeometries;
    std::vector<SharedPolygonRef> m_sharedRefs;
    std::string m_sharedRefIds;
    std::string_view m_documentSrsName;
};

} // namespace citygml
