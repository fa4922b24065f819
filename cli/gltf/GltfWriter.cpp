#include "GltfWriter.h"

#include "AtomicFile.h"
#include "BlockWriter.h"
#include "FaceConvexity.h"
#include "PngChunkFilter.h"
#include "geo/GeoFrame.h"
#include "lod/MeshPath.h"

#include <kolt/StringUtils.h>
#include <koltx/Material.h>
#include <koltx/Mesh.h>
#include <koltx/MeshUtils.h>
#include <koltx/ResolveMap.h>
#include <koltx/Texture.h>
#include <koltx/URI.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <fstream>
#include <map>
#include <stdexcept>
#include <unordered_map>

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;

struct GltfWriter::MaterialEntry {
    koltx::Material const* material; // null: the default material
    int image = -1;
};

namespace {

constexpr uint32_t ARRAY_BUFFER = 34962;
constexpr uint32_t ELEMENT_ARRAY_BUFFER = 34963;
constexpr uint64_t GlbLimit = 0xFFFFFFFFull;

uint64_t align4(uint64_t n) {
    return (n + 3) & ~uint64_t(3);
}

double clamp01(double v) {
    return std::isfinite(v) ? std::min(1.0, std::max(0.0, v)) : 0.0;
}

std::string mimeOf(fs::path const& file) {
    unsigned char head[4] = {};
    std::ifstream in(file, std::ios::binary);
    in.read(reinterpret_cast<char*>(head), 4);
    if (head[0] == 0x89 && head[1] == 'P' && head[2] == 'N' && head[3] == 'G')
        return "image/png";
    if (head[0] == 0xFF && head[1] == 0xD8)
        return "image/jpeg";
    return std::string();
}

// Letters, digits, "-", "_" and "." stay; the rest is percent-encoded for a URI.
std::string uriOf(std::string const& name) {
    std::string out;
    for (unsigned char c : name) {
        if (std::isalnum(c) || c == '-' || c == '_' || c == '.') {
            out += static_cast<char>(c);
        } else {
            char hex[4];
            std::snprintf(hex, sizeof hex, "%%%02X", c);
            out += hex;
        }
    }
    return out;
}

} // namespace

GltfWriter::GltfWriter(Input input, GeoFrame const& geoFrame, std::wstring& warnings)
    : in(std::move(input)), frame(geoFrame) {
    plan(warnings);
}

GltfWriter::~GltfWriter() = default;

uint32_t GltfWriter::materialIndex(koltx::Material const* material, std::wstring& warnings) {
    for (std::size_t i = 0; i < materials.size(); ++i) {
        koltx::Material const* known = materials[i].material;
        if (known == material || (known && material && known->equals(*material)))
            return static_cast<uint32_t>(i);
    }
    MaterialEntry entry{material, -1};
    if (material != nullptr) {
        auto const& textures = material->getDiffuseMap();
        auto const& keys = material->getDiffuseMapKeys();
        for (std::size_t i = 0; i < textures.size() && i < keys.size(); ++i) {
            if (!textures[i] || !textures[i]->isValid())
                continue;
            auto const uri = koltx::ResolveMap::resolveKeyWithURIFallback(nullptr, keys[i]);
            fs::path const source = uri ? fs::path(uri->getNativePath()) : fs::path();
            std::error_code error;
            std::string const mime =
                !source.empty() && fs::is_regular_file(source, error) ? mimeOf(source) : "";
            if (mime.empty()) {
                warnings += L"Texture " + keys[i] +
                            L" is not a local PNG or JPEG file and was "
                            L"left out\n";
                break;
            }
            for (std::size_t k = 0; k < images.size() && entry.image < 0; ++k) {
                if (images[k].source == source)
                    entry.image = static_cast<int>(k);
            }
            if (entry.image < 0) {
                entry.image = static_cast<int>(images.size());
                Image image{source, fs::file_size(source), mime, std::string()};
                if (mime == "image/png") {
                    image.bytes = PngChunkFilter::withoutColourSpace(source);
                    if (!image.bytes.empty())
                        image.size = image.bytes.size();
                }
                images.push_back(std::move(image));
            }
            break;
        }
    }
    materials.push_back(entry);
    return static_cast<uint32_t>(materials.size() - 1);
}

void GltfWriter::plan(std::wstring& warnings) {
    std::map<std::pair<uint32_t, uint32_t>, uint32_t> primitiveOf; // (node, material)
    std::unordered_map<std::string, uint32_t> nodeOf;
    std::vector<double> file;
    uint64_t skipped = 0;
    meshFeature.assign(in.meshes.size(), UINT32_MAX);
    meshNode.assign(in.meshes.size(), 0);
    meshMaterials.resize(in.meshes.size());
    positions.resize(in.meshes.size());
    table.reserve(in.meshes.size());
    bool const pathsGiven = in.paths.size() == in.meshes.size();
    if (!in.perFeature)
        nodeNames.push_back(in.nodeName);
    std::vector<bool> concave;
    std::size_t const given = in.meshes.size();
    // Concave faces go, as triangles, into meshes of their own appended to the list.
    for (uint32_t m = 0; m < in.meshes.size(); ++m) {
        if (in.meshes[m]->hasHoles())
            in.meshes[m] = koltx::MeshUtils::triangulateHoles(in.meshes[m], &warnings);
        concave.clear();
        if (auto part = m < given
                            ? FaceConvexity::triangulateConcave(*in.meshes[m], concave, warnings)
                            : nullptr) {
            in.meshes.push_back(std::move(part));
            if (pathsGiven)
                in.paths.push_back(in.paths[m]);
            meshFeature.push_back(UINT32_MAX);
            meshNode.push_back(0);
            meshMaterials.emplace_back();
            positions.emplace_back();
        }
        koltx::Mesh const& mesh = *in.meshes[m];
        // Host axes (x, z, -y) back to the file's (x, y, z), then into the output frame.
        auto const& host = mesh.getVertexCoords();
        file.resize(host.size());
        std::vector<float>& out = positions[m];
        out.resize(host.size());
        for (std::size_t i = 0; i + 2 < host.size(); i += 3) {
            file[i] = host[i];
            file[i + 1] = -host[i + 2];
            file[i + 2] = host[i + 1];
        }
        frame.toGltf(file.data(), host.size() / 3, out.data());
        bool used = false;
        bool const holes = mesh.hasHoles();
        auto const& offsets = mesh.getFaceVertexOffsets();
        for (uint32_t f = 0; f < mesh.getFaceCount(); ++f) {
            if ((holes && mesh.isHoleFace(f)) || (!concave.empty() && concave[f]))
                continue;
            uint32_t const n = offsets[f + 1] - offsets[f];
            uint32_t const* v = mesh.getVertexIndices().data() + offsets[f];
            bool finite = n >= 3;
            for (uint32_t k = 0; k < n && finite; ++k)
                for (int a = 0; a < 3; ++a)
                    finite = finite && std::isfinite(out[size_t(v[k]) * 3 + a]);
            if (!finite) {
                ++skipped;
                continue;
            }
            if (!used) {
                used = true;
                MeshPath const parsed = pathsGiven ? MeshPath() : MeshPath::parse(mesh.getName());
                MeshPath const& path = pathsGiven ? in.paths[m] : parsed;
                meshFeature[m] = table.add(path);
                if (in.perFeature) {
                    auto const [it, added] =
                        nodeOf.emplace(path.topKey, static_cast<uint32_t>(nodeNames.size()));
                    if (added)
                        nodeNames.push_back(table.topId(path));
                    meshNode[m] = it->second;
                }
                for (auto const& material : mesh.getMaterials())
                    meshMaterials[m].push_back(materialIndex(material.get(), warnings));
                ++sums.meshes;
            }
            uint32_t const local =
                f < mesh.getFaceMaterialIndices().size() ? mesh.getFaceMaterialIndices()[f] : 0;
            uint32_t const material = local < meshMaterials[m].size()
                                          ? meshMaterials[m][local]
                                          : materialIndex(nullptr, warnings);
            auto const [it, added] = primitiveOf.try_emplace(
                std::make_pair(meshNode[m], material), static_cast<uint32_t>(primitives.size()));
            if (added) {
                primitives.emplace_back();
                primitives.back().node = meshNode[m];
                primitives.back().material = material;
                primitives.back().low.fill(INFINITY);
                primitives.back().high.fill(-INFINITY);
            }
            Primitive& p = primitives[it->second];
            p.faces.push_back(FaceRef{m, f});
            p.vertices += n;
            p.indices += 3 * uint64_t(n - 2);
            for (uint32_t k = 0; k < n; ++k) {
                for (int a = 0; a < 3; ++a) {
                    float const c = out[size_t(v[k]) * 3 + a];
                    p.low[a] = std::min(p.low[a], c);
                    p.high[a] = std::max(p.high[a], c);
                }
            }
            ++sums.faces;
            sums.triangles += n - 2;
            sums.vertices += n;
        }
        if (pathsGiven)
            in.paths[m] = MeshPath(); // what it says is in the table now
    }
    if (skipped > 0)
        warnings += std::to_wstring(skipped) +
                    L" faces with fewer than three corners or a coordinate that is not finite "
                    L"were left out of the glTF output\n";
    // Distinct features per primitive.
    std::vector<uint32_t> seen(table.size(), UINT32_MAX);
    for (uint32_t i = 0; i < primitives.size(); ++i) {
        for (auto const& face : primitives[i].faces) {
            uint32_t const row = meshFeature[face.mesh];
            if (seen[row] != i) {
                seen[row] = i;
                ++primitives[i].featureCount;
            }
        }
    }
    std::vector<MeshPath>().swap(in.paths);
    table.encode(metadata, metadataViews);
    sums.materials = materials.size();
    sums.textures = images.size();
    sums.features = table.size();
    sums.nodes = nodeNames.size();
}

uint32_t GltfWriter::vertexStride(Primitive const& p) const {
    return materials[p.material].image >= 0 ? 36 : 28;
}

uint64_t GltfWriter::binaryLength(bool embedImages) const {
    uint64_t n = 0;
    for (auto const& p : primitives) {
        n += p.vertices * vertexStride(p);
        n += align4(p.indices * (p.vertices <= 0xFFFF ? 2 : 4));
    }
    if (embedImages)
        for (auto const& image : images)
            n += align4(image.size);
    if (!table.empty())
        n += metadata.size();
    return n;
}

Json GltfWriter::document(bool embedImages, std::string const& binUri,
                          std::vector<std::string> const& imageUris) const {
    Json doc;
    doc["asset"] = {{"version", "2.0"},
                    {"generator", std::string("gmlcodec ") + GMLCODEC_VERSION},
                    {"extras", in.extras}};
    bool const withFeatures = !table.empty();
    if (withFeatures)
        doc["extensionsUsed"] = {"EXT_mesh_features", "EXT_structural_metadata"};
    doc["scene"] = 0;
    Json nodes = Json::array(), meshes = Json::array(), views = Json::array(),
         accessors = Json::array();
    std::vector<Json> nodePrimitives(nodeNames.size(), Json::array());
    uint64_t offset = 0;
    // The property table comes first: its views must start at multiples of 8.
    if (withFeatures) {
        for (auto const& [start, length] : metadataViews)
            views.push_back({{"buffer", 0}, {"byteOffset", start}, {"byteLength", length}});
        offset = metadata.size();
    }
    auto const view = [&](uint64_t length, uint32_t target, uint32_t stride) {
        Json v = {{"buffer", 0}, {"byteOffset", offset}, {"byteLength", length}};
        if (stride)
            v["byteStride"] = stride;
        if (target)
            v["target"] = target;
        views.push_back(v);
        offset += align4(length);
        return views.size() - 1;
    };
    for (auto const& p : primitives) {
        uint32_t const stride = vertexStride(p);
        bool const textured = stride == 36;
        std::size_t const vv = view(p.vertices * stride, ARRAY_BUFFER, stride);
        bool const shortIndices = p.vertices <= 0xFFFF;
        std::size_t const iv = view(p.indices * (shortIndices ? 2 : 4), ELEMENT_ARRAY_BUFFER, 0);
        auto const accessor = [&](std::size_t bufferView, uint64_t byteOffset, uint32_t type,
                                  uint64_t count, char const* shape) {
            accessors.push_back({{"bufferView", bufferView},
                                 {"byteOffset", byteOffset},
                                 {"componentType", type},
                                 {"count", count},
                                 {"type", shape}});
            return accessors.size() - 1;
        };
        Json attributes;
        attributes["POSITION"] = accessor(vv, 0, 5126, p.vertices, "VEC3");
        accessors.back()["min"] = p.low;
        accessors.back()["max"] = p.high;
        attributes["NORMAL"] = accessor(vv, 12, 5126, p.vertices, "VEC3");
        if (textured)
            attributes["TEXCOORD_0"] = accessor(vv, 24, 5126, p.vertices, "VEC2");
        attributes["_FEATURE_ID_0"] = accessor(vv, textured ? 32 : 24, 5126, p.vertices, "SCALAR");
        Json primitive = {
            {"attributes", attributes},
            {"indices", accessor(iv, 0, shortIndices ? 5123 : 5125, p.indices, "SCALAR")},
            {"material", p.material},
            {"mode", 4}};
        primitive["extensions"]["EXT_mesh_features"]["featureIds"] = {
            {{"featureCount", p.featureCount}, {"attribute", 0}, {"propertyTable", 0}}};
        nodePrimitives[p.node].push_back(primitive);
    }
    for (std::size_t n = 0; n < nodeNames.size(); ++n) {
        if (nodePrimitives[n].empty())
            continue;
        meshes.push_back({{"name", nodeNames[n]}, {"primitives", nodePrimitives[n]}});
        nodes.push_back({{"name", nodeNames[n]}, {"mesh", meshes.size() - 1}});
    }
    Json images_ = Json::array();
    for (std::size_t i = 0; i < images.size(); ++i) {
        if (embedImages)
            images_.push_back(
                {{"bufferView", view(images[i].size, 0, 0)}, {"mimeType", images[i].mime}});
        else
            images_.push_back({{"uri", imageUris[i]}});
    }
    Json materials_ = Json::array();
    for (auto const& entry : materials) {
        Json m = {{"doubleSided", true}};
        Json pbr = {{"metallicFactor", 0.0}};
        double alpha = 1.0;
        if (entry.material != nullptr) {
            koltx::Material const& x = *entry.material;
            auto colour = [](std::vector<double> const& rgb) {
                return Json::array({clamp01(rgb.size() > 0 ? rgb[0] : 0),
                                    clamp01(rgb.size() > 1 ? rgb[1] : 0),
                                    clamp01(rgb.size() > 2 ? rgb[2] : 0)});
            };
            m["name"] = kolt::StringUtils::toUTF8(x.getName());
            alpha = clamp01(x.getOpacity());
            Json base = colour(x.getDiffuseColor());
            base.push_back(alpha);
            pbr["baseColorFactor"] = base;
            pbr["roughnessFactor"] = clamp01(1.0 - x.getShininess());
            m["emissiveFactor"] = colour(x.getEmissiveColor());
        }
        if (entry.image >= 0)
            pbr["baseColorTexture"] = {{"index", entry.image}};
        m["pbrMetallicRoughness"] = pbr;
        if (alpha < 1.0)
            m["alphaMode"] = "BLEND";
        materials_.push_back(m);
    }
    if (withFeatures) {
        std::size_t const first = 0;
        auto const strings = [&](std::size_t k) {
            return Json{{"values", first + 2 * k},
                        {"stringOffsets", first + 2 * k + 1},
                        {"stringOffsetType", "UINT32"}};
        };
        Json properties = {{"id", strings(0)},
                           {"class", strings(1)},
                           {"feature", strings(2)},
                           {"path", strings(3)},
                           {"lod", {{"values", first + 8}}}};
        Json string = {{"type", "STRING"}};
        doc["extensions"]["EXT_structural_metadata"] = {
            {"schema",
             {{"id", "citygml"},
              {"classes",
               {{"feature",
                 {{"properties",
                   {{"id", string},
                    {"class", string},
                    {"feature", string},
                    {"path", string},
                    {"lod",
                     {{"type", "SCALAR"}, {"componentType", "UINT8"}, {"noData", 255}}}}}}}}}}},
            {"propertyTables",
             {{{"class", "feature"}, {"count", table.size()}, {"properties", properties}}}}};
    }
    if (!nodes.empty()) {
        Json sceneNodes = Json::array();
        for (std::size_t n = 0; n < nodes.size(); ++n)
            sceneNodes.push_back(n);
        doc["scenes"] = {{{"nodes", sceneNodes}}};
        doc["nodes"] = nodes;
        doc["meshes"] = meshes;
    } else {
        doc["scenes"] = {Json::object()};
    }
    if (!materials_.empty())
        doc["materials"] = materials_;
    if (!images.empty()) {
        doc["images"] = images_;
        doc["samplers"] = {
            {{"magFilter", 9729}, {"minFilter", 9987}, {"wrapS", 10497}, {"wrapT", 10497}}};
        Json textures = Json::array();
        for (std::size_t i = 0; i < images.size(); ++i)
            textures.push_back({{"sampler", 0}, {"source", i}});
        doc["textures"] = textures;
    }
    if (!accessors.empty())
        doc["accessors"] = accessors;
    if (!views.empty())
        doc["bufferViews"] = views;
    uint64_t const length = binaryLength(embedImages);
    if (length > 0) {
        Json buffer = {{"byteLength", length}};
        if (!binUri.empty())
            buffer["uri"] = binUri;
        doc["buffers"] = {buffer};
    }
    return doc;
}

void GltfWriter::writeBinary(std::ostream& stream, bool embedImages) const {
    BlockWriter out(stream);
    if (!table.empty())
        out.put(metadata.data(), metadata.size());
    for (auto const& p : primitives) {
        bool const textured = vertexStride(p) == 36;
        for (auto const& ref : p.faces) {
            koltx::Mesh const& mesh = *in.meshes[ref.mesh];
            std::vector<float> const& xyz = positions[ref.mesh];
            auto const& offsets = mesh.getFaceVertexOffsets();
            uint32_t const n = offsets[ref.face + 1] - offsets[ref.face];
            uint32_t const* v = mesh.getVertexIndices().data() + offsets[ref.face];
            // Newell normal of the face in the output frame: flat, whatever the frame.
            double normal[3] = {0, 0, 0};
            for (uint32_t k = 0; k < n; ++k) {
                float const* a = xyz.data() + size_t(v[k]) * 3;
                float const* b = xyz.data() + size_t(v[k + 1 < n ? k + 1 : 0]) * 3;
                normal[0] += (double(a[1]) - b[1]) * (double(a[2]) + b[2]);
                normal[1] += (double(a[2]) - b[2]) * (double(a[0]) + b[0]);
                normal[2] += (double(a[0]) - b[0]) * (double(a[1]) + b[1]);
            }
            double const length =
                std::sqrt(normal[0] * normal[0] + normal[1] * normal[1] + normal[2] * normal[2]);
            // One vertex: position, normal, texture coordinates when textured, feature id.
            float vertex[9] = {0, 0, 0, 0, 0, 1, 0, 0, 0};
            vertex[3] = length > 0 ? float(normal[0] / length) : 0.0f;
            vertex[4] = length > 0 ? float(normal[1] / length) : 1.0f;
            vertex[5] = length > 0 ? float(normal[2] / length) : 0.0f;
            uint32_t const* uvIndex = textured ? mesh.getFaceUVIndices(ref.face, 0) : nullptr;
            bool const withUVs = uvIndex != nullptr && mesh.getFaceUVCount(ref.face, 0) == n;
            auto const& uvs = mesh.getUVCoords(0);
            float const feature = static_cast<float>(meshFeature[ref.mesh]);
            vertex[textured ? 8 : 6] = feature;
            std::size_t const size = textured ? 36 : 28;
            if (!textured) {
                // Straight into the output block: position, then normal and feature id.
                for (uint32_t k = 0; k < n; ++k) {
                    char* at = out.room(size);
                    std::memcpy(at, xyz.data() + size_t(v[k]) * 3, 12);
                    std::memcpy(at + 12, vertex + 3, 16);
                    out.advance(size);
                }
                continue;
            }
            for (uint32_t k = 0; k < n; ++k) {
                std::memcpy(vertex, xyz.data() + size_t(v[k]) * 3, 12);
                vertex[6] = vertex[7] = 0;
                if (withUVs && size_t(uvIndex[k]) * 2 + 1 < uvs.size()) {
                    vertex[6] = static_cast<float>(uvs[size_t(uvIndex[k]) * 2]);
                    // glTF's texture origin is the top left.
                    vertex[7] = static_cast<float>(1.0 - uvs[size_t(uvIndex[k]) * 2 + 1]);
                }
                out.put(vertex, size);
            }
        }
        bool const shortIndices = p.vertices <= 0xFFFF;
        uint32_t base = 0;
        for (auto const& ref : p.faces) {
            auto const& offsets = in.meshes[ref.mesh]->getFaceVertexOffsets();
            uint32_t const n = offsets[ref.face + 1] - offsets[ref.face];
            for (uint32_t k = 1; k + 1 < n; ++k) {
                uint32_t const tri[3] = {base, base + k, base + k + 1};
                char* at = out.room(12);
                if (shortIndices) {
                    uint16_t const small[3] = {uint16_t(tri[0]), uint16_t(tri[1]),
                                               uint16_t(tri[2])};
                    std::memcpy(at, small, 6);
                    out.advance(6);
                } else {
                    std::memcpy(at, tri, 12);
                    out.advance(12);
                }
            }
            base += n;
        }
        uint64_t const bytes = p.indices * (shortIndices ? 2 : 4);
        out.pad(align4(bytes) - bytes);
    }
    if (embedImages) {
        for (auto const& image : images) {
            if (!image.bytes.empty()) {
                out.put(image.bytes.data(), image.bytes.size());
                out.pad(align4(image.size) - image.size);
                continue;
            }
            std::ifstream source(image.source, std::ios::binary);
            std::vector<char> chunk(1 << 16);
            uint64_t copied = 0;
            while (source) {
                source.read(chunk.data(), static_cast<std::streamsize>(chunk.size()));
                std::size_t const got = static_cast<std::size_t>(source.gcount());
                copied += got;
                if (copied > image.size)
                    break;
                out.put(chunk.data(), got);
            }
            if (copied != image.size)
                throw std::runtime_error("texture " + image.source.string() +
                                         " changed while it was written");
            out.pad(align4(image.size) - image.size);
        }
    }
}

void GltfWriter::writeGlb(std::ostream& out) const {
    std::string json = document(true, std::string(), {}).dump();
    json.resize(align4(json.size()), ' ');
    uint64_t const bin = binaryLength(true);
    uint64_t const total = 12 + 8 + json.size() + (bin > 0 ? 8 + bin : 0);
    if (total > GlbLimit)
        throw std::runtime_error("the GLB would pass the format's 4 GiB; write .gltf instead");
    auto const word = [&out](uint32_t value) {
        out.write(reinterpret_cast<char const*>(&value), 4); // little-endian host
    };
    word(0x46546C67); // "glTF"
    word(2);
    word(static_cast<uint32_t>(total));
    word(static_cast<uint32_t>(json.size()));
    word(0x4E4F534A); // "JSON"
    out.write(json.data(), static_cast<std::streamsize>(json.size()));
    if (bin > 0) {
        word(static_cast<uint32_t>(bin));
        word(0x004E4942); // "BIN"
        writeBinary(out, true);
    }
}

void GltfWriter::writeGltf(fs::path const& path) const {
    fs::path const dir = path.parent_path();
    std::string const stem = path.stem().string();
    std::string const binName = stem + ".bin";
    std::vector<std::string> names;
    std::vector<std::string> uris;
    for (auto const& image : images) {
        std::string legal = image.source.filename().string();
        for (char& c : legal)
            if (!std::isalnum(static_cast<unsigned char>(c)) && c != '-' && c != '_' && c != '.')
                c = '_';
        if (legal.empty() || legal[0] == '.')
            legal = "texture" + legal;
        fs::path const base(legal);
        std::string name = legal;
        for (int n = 1; std::find(names.begin(), names.end(), name) != names.end() ||
                        name == binName || name == path.filename().string();
             ++n)
            name = base.stem().string() + "_" + std::to_string(n) + base.extension().string();
        names.push_back(name);
        uris.push_back(uriOf(name));
    }
    bool const withBin = binaryLength(false) > 0;
    std::vector<std::unique_ptr<AtomicFile>> files;
    for (std::size_t i = 0; i < images.size(); ++i) {
        std::ifstream source(images[i].source, std::ios::binary);
        files.push_back(std::make_unique<AtomicFile>(dir / names[i]));
        if (!images[i].bytes.empty())
            files.back()->stream() << images[i].bytes;
        else
            files.back()->stream() << source.rdbuf();
        if (!source)
            throw std::runtime_error("cannot read " + images[i].source.string());
    }
    if (withBin) {
        files.push_back(std::make_unique<AtomicFile>(dir / binName));
        writeBinary(files.back()->stream(), false);
    }
    AtomicFile gltf(path);
    gltf.stream() << document(false, withBin ? uriOf(binName) : std::string(), uris).dump(1)
                  << "\n";
    for (auto& file : files)
        file->commit();
    gltf.commit();
}
