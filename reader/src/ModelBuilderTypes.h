#pragma once

#include "ModelBuilder.h"

#include <citygml/AttributeValue.h>
#include <citygml/Material.h>
#include <citygml/MaterialTargetDefinition.h>
#include <citygml/Texture.h>
#include <citygml/TextureTargetDefinition.h>

#include <memory>
#include <string>
#include <vector>

namespace citygml {

// Records private to ModelBuilder, kept apart so its header stays readable.
enum class ElementSym : unsigned char {
    None,
    SimpleProperty,
    Implicit,
    CityModel,
    CityObject,
    Geometry,
    Polygon,
    LinearRing,
    Exterior,
    Interior,
    Pos,
    PosList,
    Coordinates,
    BoundedBy,
    Envelope,
    LowerCorner,
    UpperCorner,
    GenericAttribute,
    GenericSet,
    GenericName,
    GenericValue,
    DemLod,
    Appearance,
    Theme,
    SurfaceDataMember,
    X3DMaterial,
    ParameterizedTexture,
    GeoreferencedTexture,
    ImageUri,
    MimeType,
    WrapMode,
    IsFront,
    Target,
    TextureCoordinates,
    TextureAssociation,
    DiffuseColor,
    EmissiveColor,
    SpecularColor,
    AmbientIntensity,
    Shininess,
    Transparency,
    IsSmooth,
};

struct ModelBuilder::ElementInfo {
    std::string localName;
    std::string prefix;
    std::string uri;
    NamespaceInfo ns;
    std::string tag; // canonical prefix + ":" + lower-case local name
    std::string const* internedTag = nullptr;
    Sym sym = Sym::None;
    signed char lod = -1; // N of a "lodN..." property
    CityObject::CityObjectsType objectType = CityObject::CityObjectsType::COT_Unknown;
    Geometry::GeometryType geometryType = Geometry::GeometryType::GT_Unknown;
    AttributeType attributeType = AttributeType::String;
};

struct ModelBuilder::Frame {
    ElementInfo const* info = nullptr;
    Sym sym = Sym::None;
    signed char lod = -1;
    signed char dimension = 3;
    char cs = ',';
    char ts = ' ';
    char decimal = '.';
    bool ownsPending = false;
    bool ownsWrapper = false;
    std::size_t pathStart = 0;
    std::size_t pathEnd = 0;
    std::string_view href; // in the model's storage
};

struct ModelBuilder::ObjectFrame {
    CityObject* object;
    std::size_t frame;
    int reliefLod;
    std::string_view firstSrsName;
};

struct ModelBuilder::SurfaceData {
    std::shared_ptr<Material> material;
    std::shared_ptr<Texture> texture;
    std::vector<TextureTargetDefinition*> textureTargets;
    std::vector<std::string_view> materialTargets;
    std::vector<MaterialTargetDefinition*> materialDefinitions;
};

// The texture target being read; reused from one target to the next.
struct ModelBuilder::PendingTarget {
    bool active = false;
    std::string_view targetId;
    std::vector<TextureCoordinates*> coords;

    void start(std::string_view target) {
        active = true;
        targetId = target;
        coords.clear();
    }
};

struct ModelBuilder::GenericAttribute {
    std::string name;
    std::string value;
    AttributeType type = AttributeType::String;
    bool isSet = false;
    std::size_t depth = 0;
};

// An xlink:href surface member: a slot in `geometry`'s polygon list to fill after the read.
struct ModelBuilder::SharedPolygonRef {
    Geometry* geometry;
    std::size_t slot;
    // The referenced id, kept in m_sharedRefIds: millions of references make no allocation each.
    std::size_t idOffset;
    std::size_t idLength;
};

// Surface data `data` (or the one with id `dataId`) applies in `theme`.
struct ModelBuilder::ThemeLink {
    std::size_t data;
    std::string_view dataId;
    std::string_view theme;
};

} // namespace citygml
