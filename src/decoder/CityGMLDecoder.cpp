#include "decoder/CityGMLDecoder.h"

#include "decoder/AttributeConversion.h"
#include "decoder/MeshPath.h"
#include "decoder/WideText.h"
#include "vocabulary/PathNormalizer.h"

#include <citygml/citygml.h>
#include <koltx/DataBackend.h>
#include <koltx/GeometryBuilder.h>
#include <koltx/MeshBuilder.h>
#include <koltx/ResolveMap.h>

#include <exception>
#include <stdexcept>

namespace {

std::wstring const SpatialReferenceKey = L"/georef/spatialReference";

// The parser's path of an object or geometry, in schema spelling.
std::wstring normalizedPath(citygml::HierarchyTracker const& tracker, std::string_view id) {
    return normalizeNodePath(toWide(tracker.getNodeStackPath(id, nullptr)));
}

std::vector<citygml::TVec2f> getRingTextureCoordinates(citygml::Polygon const& polygon,
                                                       citygml::LinearRing const& ring,
                                                       std::string const& theme) {
    auto const definition = polygon.getTextureTargetDefinitionForTheme(theme, true);
    if (!definition)
        return {};
    auto const coordinates = definition->getTextureCoordinatesForID(ring.getId());
    if (!coordinates || coordinates->getCoords().empty())
        return {};
    return coordinates->getCoords();
}

} // namespace

CityGMLDecoder::CityGMLDecoder()
    : materials([this](std::wstring const& textureKey, std::wstring* warnings) {
          return resolveTexture(textureKey, warnings);
      }) {}

CityGMLDecoder::~CityGMLDecoder() = default;

void CityGMLDecoder::decode(std::vector<std::shared_ptr<koltx::Content>>& results,
                            std::istream& stream, kolt::Cache* hostCache,
                            std::wstring const& fileKey, koltx::ResolveMap const* map,
                            std::wstring& warnings) {
    std::shared_ptr<citygml::CityModel const> model;
    try {
        citygml::ParserParams params;
        // Rings must arrive as they stand in the file; the host deals with holes itself.
        params.tesselate = false;
        model = citygml::load(stream, params, nullptr, nullptr);
    } catch (std::runtime_error const& e) {
        warnings += L"Failed to load citygml file: " + toWide(e.what()) + L"\n";
    }
    if (!model)
        return;
    if (&fileKey != &key)
        key = fileKey;
    cache = hostCache;
    resolveMap = map;
    materials.setFile(key, resolveMap);
    decodeModel(*model, results, warnings);
}

std::shared_ptr<koltx::Mesh> CityGMLDecoder::createMesh(koltx::MeshBuilder& meshBuilder,
                                                        std::wstring* warnings) {
    return meshBuilder.createSharedAndReset(warnings);
}

std::shared_ptr<koltx::Texture> CityGMLDecoder::resolveTexture(std::wstring const& textureKey,
                                                               std::wstring* warnings) {
    return koltx::DataBackend::resolveTexture(cache, textureKey, resolveMap, warnings);
}

void CityGMLDecoder::decodeModel(citygml::CityModel const& model,
                                 std::vector<std::shared_ptr<koltx::Content>>& results,
                                 std::wstring& warnings) {
    koltx::GeometryBuilder builder;
    builder.setURI(koltx::ResolveMap::resolveKeyWithURIFallback(resolveMap, key));
    bool first = true;
    bool any = false;
    for (citygml::CityObject const* root : model.getRootCityObjects()) {
        if (first) {
            // Only the first root object speaks for the file; the model's envelope stands in
            // for it when its own bounds are not valid.
            citygml::Envelope const& envelope =
                root->getEnvelope().validBounds() ? root->getEnvelope() : model.getEnvelope();
            if (!envelope.srsName().empty())
                builder.setString(SpatialReferenceKey, toWide(envelope.srsName()));
            convertAttributes(builder, *root, warnings);
            first = false;
        }
        std::wstring path;
        if (decodeCityObject(builder, *root, path, warnings))
            any = true;
    }
    if (any)
        results.push_back(builder.createSharedAndReset(&warnings));
}

bool CityGMLDecoder::decodeCityObject(koltx::GeometryBuilder& builder,
                                      citygml::CityObject const& object, std::wstring& path,
                                      std::wstring& warnings) {
    std::size_t const parentLength = path.size();
    path += normalizedPath(object, object.getId());
    bool added = false;
    // Children first: a feature's meshes follow those of its child features.
    for (unsigned int i = 0; i < object.getChildCityObjectsCount(); ++i) {
        if (decodeCityObject(builder, object.getChildCityObject(i), path, warnings))
            added = true;
    }
    for (unsigned int i = 0; i < object.getGeometriesCount(); ++i) {
        if (decodeGeometry(builder, object.getGeometry(i), path, warnings))
            added = true;
    }
    path.resize(parentLength);
    return added;
}

bool CityGMLDecoder::decodeGeometry(koltx::GeometryBuilder& builder,
                                    citygml::Geometry const& geometry, std::wstring& path,
                                    std::wstring& warnings) {
    koltx::MeshBuilder meshBuilder;
    DecodedMaterials::MaterialIndices materialIndices;
    std::size_t const parentLength = path.size();
    path += geometryMeshPath(std::wstring(),
                             toWide(geometry.getNodeStackPath(geometry.getId(), nullptr)),
                             geometry.getLOD());
    meshBuilder.setName(path);

    bool added = false;
    citygml::ObjectList<citygml::Polygon*> const& polygons = geometry.polygons();
    unsigned int const polygonCount = static_cast<unsigned int>(polygons.size());
    // One pass to size the builder exactly: growing its arrays polygon by polygon costs more
    // than this, and the mesh keeps what the builder reserved. A ring's closing copy of its first
    // position is not a vertex of the mesh.
    std::size_t faces = 0;
    std::size_t corners = 0;
    for (citygml::Polygon const* polygon : polygons) {
        if (!polygon || !polygon->exterior())
            continue;
        faces += 1 + polygon->interiors().size();
        corners += polygon->exterior()->vertexCount() - 1;
        for (citygml::LinearRing const* interior : polygon->interiors())
            if (interior)
                corners += interior->vertexCount() - 1;
    }
    meshBuilder.reserve(corners, faces, corners);
    for (citygml::Polygon const* polygon : polygons) {
        // The reader never delivers a polygon without exterior ring; a foreign one is skipped.
        if (polygon && polygon->exterior())
            addPolygon(meshBuilder, materialIndices, *polygon, warnings);
    }
    if (polygonCount != 0) {
        try {
            builder.addMesh(createMesh(meshBuilder, &warnings));
            added = true;
        } catch (std::exception const& e) {
            warnings +=
                L"Could not decode geometry at '" + path + L"'. Error: " + toWide(e.what()) + L"\n";
        } catch (...) {
            // No line end: the next warning follows on the same line, as hosts have seen it.
            warnings += L"Could not decote geometry at '" + path + L"'. Unknown error.";
        }
    }
    for (unsigned int i = 0; i < geometry.getGeometriesCount(); ++i) {
        if (decodeGeometry(builder, geometry.getGeometry(i), path, warnings))
            added = true;
    }
    path.resize(parentLength);
    return added;
}

void CityGMLDecoder::addPolygon(koltx::MeshBuilder& meshBuilder,
                                DecodedMaterials::MaterialIndices& materialIndices,
                                citygml::Polygon const& polygon, std::wstring& warnings) {
    uint32_t const materialIndex =
        materials.getMaterialIndex(meshBuilder, materialIndices, polygon, warnings);
    std::vector<std::string> const themes = polygon.getAllTextureThemes(true);
    std::string const theme = themes.empty() ? std::string() : themes.front();

    uint32_t const face = addRing(meshBuilder, polygon, *polygon.exterior(), theme, warnings);
    meshBuilder.setFaceMaterialIndex(face, materialIndex);
    for (citygml::LinearRing const* interior : polygon.interiors()) {
        if (!interior)
            continue;
        uint32_t const hole = addRing(meshBuilder, polygon, *interior, theme, warnings);
        meshBuilder.addFaceHoleIndex(face, hole);
    }
}

uint32_t CityGMLDecoder::addRing(koltx::MeshBuilder& meshBuilder, citygml::Polygon const& polygon,
                                 citygml::LinearRing const& ring, std::string const& theme,
                                 std::wstring& warnings) {
    uint32_t const face = meshBuilder.addFace();
    citygml::TVec3d const* vertices = ring.vertexData();
    std::size_t const count = ring.vertexCount();
    // The last vertex is the closing copy of the first and is skipped. The file's (x, y, z)
    // becomes the host's (x, z, -y): a rotation, so rings keep their sense of turn.
    for (std::size_t i = 0; i + 1 < count; ++i) {
        double const xyz[3] = {vertices[i].x, vertices[i].z, -vertices[i].y};
        meshBuilder.addFaceVertexIndex(face, meshBuilder.addVertexCoords(xyz));
    }

    std::vector<citygml::TVec2f> coords = getRingTextureCoordinates(polygon, ring, theme);
    if (coords.size() > count) {
        coords.resize(count);
        warnings += L"Ring '" + toWide(ring.getId()) +
                    L"' has more of texture coordinates than vertices for theme '" + toWide(theme) +
                    L"'. Dropping surplus.\n";
    }
    if (!coords.empty() && coords.size() < count) {
        coords.resize(count, citygml::TVec2f(0.f, 0.f));
        warnings += L"Ring '" + toWide(ring.getId()) +
                    L"' has not enough texture coordinates for all vertices vertices for theme '" +
                    toWide(theme) + L"'. Using 0/0 coordinates.\n";
    }
    for (std::size_t i = 0; i + 1 < coords.size(); ++i) {
        double const uv[2] = {static_cast<double>(coords[i].x), static_cast<double>(coords[i].y)};
        meshBuilder.addFaceUVIndex(face, 0, meshBuilder.addUVCoords(0, uv));
    }
    return face;
}
