#include "ObjReader.h"

#include <kolt/Cache.h>
#include <kolt/StringUtils.h>
#include <koltx/DataBackend.h>
#include <koltx/Material.h>
#include <koltx/MaterialBuilder.h>
#include <koltx/Mesh.h>
#include <koltx/MeshBuilder.h>

#include <tiny_obj_loader.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <stdexcept>

namespace {

constexpr std::uint32_t unset = UINT32_MAX;

std::vector<double> colour(tinyobj::real_t const* rgb) {
    return {static_cast<double>(rgb[0]), static_cast<double>(rgb[1]), static_cast<double>(rgb[2])};
}

// The .mtl stores Phong exponents; the host's shininess is a fraction of the usual 128.
std::shared_ptr<koltx::Material> convertMaterial(tinyobj::material_t const& source,
                                                 std::filesystem::path const& folder,
                                                 kolt::Cache* cache, std::wstring& warnings) {
    koltx::MaterialBuilder builder;
    builder.name(kolt::StringUtils::toUTF16(source.name))
        .ambientColor(colour(source.ambient))
        .diffuseColor(colour(source.diffuse))
        .specularColor(colour(source.specular))
        .emissiveColor(colour(source.emission))
        .shininess(std::clamp(static_cast<double>(source.shininess) / 128.0, 0.0, 1.0))
        .opacity(std::clamp(static_cast<double>(source.dissolve), 0.0, 1.0));
    if (!source.diffuse_texname.empty()) {
        std::filesystem::path const file = (folder / source.diffuse_texname).lexically_normal();
        std::wstring const key = kolt::StringUtils::toUTF16(file.string());
        auto texture = koltx::DataBackend::resolveTexture(cache, key, nullptr, &warnings);
        if (texture)
            builder.diffuseMap({texture}, {key});
    }
    return builder.createSharedAndReset(&warnings);
}

// Maps indices of the whole file to indices of one mesh; reset cheaply between meshes.
class IndexMap {
public:
    explicit IndexMap(std::size_t size) : map(size, unset) {}
    std::uint32_t& operator[](std::size_t index) {
        if (map[index] == unset)
            touched.push_back(index);
        return map[index];
    }
    void reset() {
        for (auto index : touched)
            map[index] = unset;
        touched.clear();
    }

private:
    std::vector<std::uint32_t> map;
    std::vector<std::size_t> touched;
};

// For each "v" line of the file, whether one of its three coordinates is NaN, infinite or no
// number at all: the OBJ parser reads "nan", "inf" and "x" as 0 without a word. Material
// libraries that are pipes or devices, which the parser would block on, are refused here too.
std::vector<bool> unusableVertices(std::string const& path) {
    std::vector<bool> bad;
    std::ifstream in(path, std::ios::binary);
    for (std::string line; std::getline(in, line);) {
        std::size_t at = line.find_first_not_of(" \t");
        if (at != std::string::npos && line.compare(at, 7, "mtllib ") == 0) {
            std::istringstream names(line.substr(at + 7));
            for (std::string name; names >> name;) {
                auto const library = std::filesystem::path(path).parent_path() / name;
                std::error_code error;
                if (std::filesystem::exists(library, error) &&
                    !std::filesystem::is_regular_file(library, error))
                    throw std::runtime_error("cannot read " + path + ": material library " +
                                             library.string() + " is not a regular file");
            }
            continue;
        }
        if (at == std::string::npos || line[at] != 'v' || at + 1 >= line.size() ||
            (line[at + 1] != ' ' && line[at + 1] != '\t'))
            continue;
        bool unusable = false;
        ++at;
        for (int c = 0; c < 3 && !unusable; ++c) {
            at = line.find_first_not_of(" \t\r", at);
            std::size_t const end = line.find_first_of(" \t\r", at);
            double value = 0;
            char const* first = at == std::string::npos ? line.data() + line.size() : &line[at];
            char const* last = line.data() + (end == std::string::npos ? line.size() : end);
            auto const parsed = std::from_chars(first, last, value);
            unusable = parsed.ec != std::errc() || parsed.ptr != last || !std::isfinite(value);
            at = end;
        }
        bad.push_back(unusable);
    }
    return bad;
}

// The 1-based number of the first vertex of a face that is unusable, or 0. Indices out of range
// are left to the caller.
std::size_t unusableVertex(std::vector<bool> const& bad,
                           std::vector<tinyobj::index_t> const& indices, std::size_t offset,
                           std::size_t count) {
    for (std::size_t k = 0; k < count; ++k) {
        auto const v = static_cast<std::size_t>(indices[offset + k].vertex_index);
        if (indices[offset + k].vertex_index >= 0 && v < bad.size() && bad[v])
            return v + 1;
    }
    return 0;
}

} // namespace

std::vector<std::shared_ptr<koltx::Mesh>>
ObjReader::read(std::string const& path, kolt::Cache* cache, std::wstring& warnings) {
    std::filesystem::path const file(path);
    if (!std::filesystem::is_regular_file(file))
        throw std::runtime_error(
            "cannot read " + path + ": " +
            (std::filesystem::exists(file) ? "not a regular file" : "No such file or directory"));
    tinyobj::ObjReaderConfig config;
    config.triangulate = false;
    config.vertex_color = false;
    config.mtl_search_path = file.parent_path().string();
    std::error_code error;
    if (std::filesystem::file_size(file, error) == 0 && !error)
        throw std::runtime_error("cannot read " + path + ": the file is empty");
    std::vector<bool> const unusable = unusableVertices(path);
    tinyobj::ObjReader reader;
    if (!reader.ParseFromFile(path, config))
        throw std::runtime_error("cannot read " + path + ": " +
                                 (reader.Error().empty() ? "not an OBJ file" : reader.Error()));
    if (!reader.Warning().empty())
        warnings += kolt::StringUtils::toUTF16(reader.Warning());

    auto const& attrib = reader.GetAttrib();
    std::filesystem::path const folder =
        config.mtl_search_path.empty() ? std::filesystem::path(".") : file.parent_path();
    std::vector<std::shared_ptr<koltx::Material>> materials;
    for (auto const& material : reader.GetMaterials())
        materials.push_back(convertMaterial(material, folder, cache, warnings));
    std::shared_ptr<koltx::Material> const plain =
        koltx::MaterialBuilder().createSharedAndReset(nullptr);

    IndexMap vertexMap(attrib.vertices.size() / 3);
    IndexMap uvMap(attrib.texcoords.size() / 2);
    std::vector<std::shared_ptr<koltx::Mesh>> meshes;
    for (auto const& shape : reader.GetShapes()) {
        auto const& mesh = shape.mesh;
        if (mesh.num_face_vertices.empty())
            continue; // lines and points have no surface
        koltx::MeshBuilder builder;
        builder.setName(kolt::StringUtils::toUTF16(shape.name));
        builder.reserve(mesh.indices.size(), mesh.num_face_vertices.size(), mesh.indices.size());
        std::map<int, std::uint32_t> materialIndex;
        int lastId = -1;
        std::uint32_t lastIndex = unset;
        std::size_t offset = 0;
        std::size_t nonFinite = 0; // faces dropped for a NaN or infinite coordinate
        std::size_t firstBadVertex = 0;
        for (std::size_t f = 0; f < mesh.num_face_vertices.size(); ++f) {
            std::size_t const count = mesh.num_face_vertices[f];
            bool withUVs = true;
            std::size_t const bad = unusableVertex(unusable, mesh.indices, offset, count);
            if (bad != 0) {
                firstBadVertex = nonFinite++ == 0 ? bad : firstBadVertex;
                offset += count;
                continue;
            }
            for (std::size_t k = 0; k < count; ++k) {
                auto const& index = mesh.indices[offset + k];
                if (index.vertex_index < 0 ||
                    static_cast<std::size_t>(index.vertex_index) * 3 + 2 >= attrib.vertices.size())
                    throw std::runtime_error("cannot read " + path + ": face " +
                                             std::to_string(f + 1) + " of '" + shape.name +
                                             "' refers to a missing vertex");
                withUVs = withUVs && index.texcoord_index >= 0 &&
                          static_cast<std::size_t>(index.texcoord_index) * 2 + 1 <
                              attrib.texcoords.size();
            }
            std::uint32_t const face = builder.addFace();
            for (std::size_t k = 0; k < count; ++k) {
                auto const& index = mesh.indices[offset + k];
                auto const v = static_cast<std::size_t>(index.vertex_index);
                std::uint32_t& vertex = vertexMap[v];
                if (vertex == unset) {
                    double const xyz[3] = {attrib.vertices[3 * v], attrib.vertices[3 * v + 1],
                                           attrib.vertices[3 * v + 2]};
                    vertex = builder.addVertexCoords(xyz);
                }
                builder.addFaceVertexIndex(face, vertex);
                if (withUVs) {
                    auto const t = static_cast<std::size_t>(index.texcoord_index);
                    std::uint32_t& uv = uvMap[t];
                    if (uv == unset) {
                        double const st[2] = {attrib.texcoords[2 * t], attrib.texcoords[2 * t + 1]};
                        uv = builder.addUVCoords(0, st);
                    }
                    builder.addFaceUVIndex(face, 0, uv);
                }
            }
            offset += count;

            int const id = f < mesh.material_ids.size() ? mesh.material_ids[f] : -1;
            // Faces come in runs of one material: the map is asked only when the run ends.
            if (id != lastId || lastIndex == unset) {
                auto found = materialIndex.find(id);
                if (found == materialIndex.end()) {
                    bool const known = id >= 0 && static_cast<std::size_t>(id) < materials.size();
                    std::uint32_t const added = builder.addMaterial(
                        known ? materials[static_cast<std::size_t>(id)] : plain);
                    found = materialIndex.emplace(id, added).first;
                }
                lastId = id;
                lastIndex = found->second;
            }
            builder.setFaceMaterialIndex(face, lastIndex);
        }
        if (nonFinite > 0)
            warnings += kolt::StringUtils::toUTF16(path + ": object '" + shape.name) + L"': " +
                        std::to_wstring(nonFinite) + L" faces dropped: vertex " +
                        std::to_wstring(firstBadVertex) +
                        L" (and maybe others) has a coordinate that is not a finite number\n";
        vertexMap.reset();
        uvMap.reset();
        meshes.push_back(builder.createSharedAndReset(&warnings));
    }
    return meshes;
}
