#pragma once

#include "decoder/DecodedMaterials.h"

#include <koltx/GeometryDecoder.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace citygml {
class CityModel;
class CityObject;
class Geometry;
class LinearRing;
class Polygon;
template <class T> class TVec2;
} // namespace citygml
namespace koltx {
class GeometryBuilder;
class Mesh;
class MeshBuilder;
class Texture;
} // namespace koltx

// Reads one CityGML file into one host geometry: a mesh per CityGML geometry with polygons,
// named by its mesh path, plus the first root object's attributes and spatial reference.
// Serves one thread at a time. Materials and textures stay cached for the decoder's whole life,
// across decodes, and nothing is ever evicted, on purpose: the codec's rules make the caches
// grow with the decoder, so a host that wants the memory back drops the decoder.
class CityGMLDecoder : public koltx::GeometryDecoder {
public:
    CityGMLDecoder();
    ~CityGMLDecoder() override;

    void decode(std::vector<std::shared_ptr<koltx::Content>>& results, std::istream& stream,
                kolt::Cache* cache, std::wstring const& key, koltx::ResolveMap const* resolveMap,
                std::wstring& warnings) override;

protected:
    // The two host calls a decode survives when they fail; tests replace them to inject faults.
    virtual std::shared_ptr<koltx::Mesh> createMesh(koltx::MeshBuilder& meshBuilder,
                                                    std::wstring* warnings);
    virtual std::shared_ptr<koltx::Texture> resolveTexture(std::wstring const& key,
                                                           std::wstring* warnings);

private:
    void decodeModel(citygml::CityModel const& model,
                     std::vector<std::shared_ptr<koltx::Content>>& results, std::wstring& warnings);
    // `path` holds the parent's mesh path on entry and on return; one buffer serves the whole
    // walk, so deep nesting costs memory linear in its depth.
    bool decodeCityObject(koltx::GeometryBuilder& builder, citygml::CityObject const& object,
                          std::wstring& path, std::wstring& warnings);
    bool decodeGeometry(koltx::GeometryBuilder& builder, citygml::Geometry const& geometry,
                        std::wstring& path, std::wstring& warnings);
    void addPolygon(koltx::MeshBuilder& meshBuilder,
                    DecodedMaterials::MaterialIndices& materialIndices,
                    citygml::Polygon const& polygon, std::wstring& warnings);
    uint32_t addRing(koltx::MeshBuilder& meshBuilder, citygml::Polygon const& polygon,
                     citygml::LinearRing const& ring, std::string const& theme,
                     std::wstring& warnings);

    DecodedMaterials materials;
    kolt::Cache* cache = nullptr;
    std::wstring key;
    koltx::ResolveMap const* resolveMap = nullptr;
};
