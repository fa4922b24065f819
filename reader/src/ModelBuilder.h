#pragma once

#include "Diagnostics.h"
#include "ElementTable.h"
#include "IdTable.h"
#include "ObjectArena.h"
#include "SaxHandler.h"
#include "collect/AppearanceCollector.h"
#include "collect/EnvelopeCollector.h"
#include "collect/GenericAttributeCollector.h"
#include "collect/PolygonCollector.h"

#include <citygml/CityGMLLogger.h>
#include <citygml/CityModel.h>
#include <citygml/ParserParams.h>
#include <citygml/TesselatorBase.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace citygml {

// Turns the parser's events into a CityModel in one pass. It keeps the element stack, the element
// paths and the open city objects and geometries, and hands each element to the collector of its
// kind. References by id (shared polygons, appearance targets) are resolved in finish(), after
// the whole document has been read.
class ModelBuilder : public SaxHandler {
public:
    ModelBuilder(ParserParams const& params, std::shared_ptr<TesselatorBase> tesselator,
                 std::shared_ptr<CityGMLLogger> logger);
    ~ModelBuilder() override;

    void startElement(char const* localName, char const* prefix, char const* uri,
                      XmlAttribute const* attributes, int count, StartLine line) override;
    void endElement() override;
    void characters(char const* text, std::size_t length) override;

    std::shared_ptr<CityModel> finish();

private:
    using Sym = ElementSym;
    struct Frame {
        ElementInfo const* info = nullptr;
        Sym sym = Sym::None;
        signed char lod = -1;
        signed char dimension = 3;
        char cs = ',';
        char ts = ' ';
        char decimal = '.';
        bool ownsWrapper = false;
        int line = 0;
        std::size_t pathStart = 0;
        std::size_t pathEnd = 0;
        AppearanceCollector::Slot appearance;
    };
    struct ObjectFrame {
        CityObject* object;
        std::size_t frame;
        int reliefLod;
        std::string_view firstSrsName;
    };
    // An xlink:href surface member: a slot in `geometry`'s polygon list to fill after the read.
    struct SharedPolygonRef {
        Geometry* geometry;
        std::size_t slot;
        // The referenced id, kept in m_sharedRefIds: millions of references make no allocation
        // each.
        std::size_t idOffset;
        std::size_t idLength;
        int line;
    };

    // The document's id kept in the model, or a generated one when there is none.
    std::string_view modelId(std::string_view documentId);
    // The id of an element whose path was just stored: a view into the path's last step.
    std::string_view idFromPath(std::string_view path, std::string_view documentId);
    // The feature that properties met now belong to: the innermost open object, or the model.
    FeatureObject& owner();
    void startText(std::size_t depth);
    bool takeText(std::size_t depth, std::string_view& out);

    void start(Frame& f, Sym parentSym, std::string_view documentId, std::string_view srsName,
               AttributeList attributes);
    void end(Frame& f, std::size_t depth);
    void endPositions(Frame const& f, std::size_t depth);
    // `documentId` is the element's gml:id, empty when it has none.
    void startCityObject(ElementInfo const& info, std::string_view documentId);
    // An object's geometry, or a geometry inside another: false when it is not read.
    bool underObject() const;
    bool startGeometry(ElementInfo const& info, std::string_view documentId,
                       std::string_view srsName);
    bool startPolygon(ElementInfo const& info, std::string_view documentId, int line);
    void endPolygon();
    void endCityObject(std::size_t depth);
    void addSharedPolygon(std::string_view reference, int line);

    void indexTargets();
    void resolveSharedPolygons();
    // Runs last: the id table points into the polygon lists, which this reshuffles.
    void dropUnresolvedSlots();

    ParserParams m_params;
    std::shared_ptr<TesselatorBase> m_tesselator;
    Diagnostics m_diagnostics;
    std::shared_ptr<CityModel> m_model;
    // The model's storage, where every object, id and vertex read goes.
    ObjectArena& m_store;

    ElementTable m_elements;
    std::vector<Frame> m_frames;
    std::size_t m_skipDepth = 0;
    std::string m_path;

    bool m_collect = false;
    std::size_t m_textDepth = 0;
    std::string m_text;

    std::vector<ObjectFrame> m_objects;
    std::vector<std::pair<Geometry*, std::size_t>> m_geometries; // with frame index

    PolygonCollector m_polygons;
    EnvelopeCollector m_envelope;
    GenericAttributeCollector m_generic;
    AppearanceCollector m_appearance;

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
