#include "ObjWriter.h"

#include "AtomicFile.h"
#include "FileNames.h"
#include "GeometrySummary.h"
#include "Json.h"

#include <kolt/StringUtils.h>
#include <koltx/Geometry.h>
#include <koltx/Material.h>
#include <koltx/Mesh.h>
#include <koltx/MeshUtils.h>
#include <koltx/ResolveMap.h>
#include <koltx/Texture.h>
#include <koltx/URI.h>

#include <algorithm>
#include <charconv>
#include <fstream>
#include <set>
#include <sstream>
#include <stdexcept>

namespace fs = std::filesystem;

namespace {

// Shortest fixed-point text that reads back as the same double; -0 is written as 0.
std::string number(double value) {
    char text[400];
    auto const result =
        std::to_chars(text, text + sizeof text, value + 0.0, std::chars_format::fixed);
    return std::string(text, result.ptr);
}

// Colours and texture coordinates come from floats in most sources; a double that is exactly
// a float is written as the float's shortest text (0.6, not 0.6000000238418579).
std::string shortNumber(double value) {
    float const single = static_cast<float>(value);
    if (static_cast<double>(single) != value)
        return number(value);
    char text[64];
    auto const result =
        std::to_chars(text, text + sizeof text, single + 0.0f, std::chars_format::fixed);
    return std::string(text, result.ptr);
}

// Material values need no more than float precision.
std::string materialNumber(double value) {
    return shortNumber(static_cast<double>(static_cast<float>(value)));
}

std::string colour(std::vector<double> const& rgb) {
    std::string out;
    for (std::size_t i = 0; i < 3; ++i)
        out += " " + materialNumber(i < rgb.size() ? rgb[i] : 0.0);
    return out;
}

// File names from documents may hold anything; keep letters, digits, "-", "_" and ".".
std::string legalFileName(std::string name) {
    for (char& c : name) {
        bool const ok = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
                        (c >= '0' && c <= '9') || c == '-' || c == '_' || c == '.';
        if (!ok)
            c = '_';
    }
    for (char& c : name) {
        if (c != '.')
            break;
        c = '_';
    }
    return name.empty() ? std::string("texture") : name;
}

// An object name stays on its "o" line: control characters (a line feed in a gml:id) become "_".
std::string objectName(std::string name) {
    for (char& c : name)
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7f)
            c = '_';
    return name;
}

} // namespace

ObjWriter::ObjWriter(fs::path objPath) : obj(std::move(objPath)) {
    fs::path const dir = obj.parent_path();
    // The library's name stands on the OBJ's "mtllib" line.
    std::string const stem = objectName(obj.stem().string());
    mtl = dir / (stem + ".mtl");
    attributes = dir / (stem + ".attributes.json");
}

void ObjWriter::protect(fs::path const& file) {
    protectedFiles.push_back(file);
}

bool ObjWriter::isProtected(fs::path const& file) const {
    return std::any_of(protectedFiles.begin(), protectedFiles.end(),
                       [&](fs::path const& p) { return FileNames::sameFile(p, file); });
}

std::string ObjWriter::sideName(std::string const& name, std::string const& content) {
    std::string const chosen = FileNames::unique(name, [&](std::string const& candidate) {
        fs::path const path = obj.parent_path() / candidate;
        std::error_code error;
        return taken.count(candidate) != 0 ||
               (fs::exists(path, error) && (isProtected(path) || !FileNames::holds(path, content)));
    });
    taken.insert(chosen);
    return chosen;
}

std::string ObjWriter::materialName(koltx::Material const* material) {
    auto const known = materialNames.find(material);
    if (known != materialNames.end())
        return known->second;
    std::string name = "material_" + std::to_string(materialOrder.size());
    materialNames.emplace(material, name);
    materialOrder.push_back(material);
    return name;
}

std::string ObjWriter::textureFile(koltx::Material const& material, std::wstring& warnings) {
    auto const& textures = material.getDiffuseMap();
    auto const& keys = material.getDiffuseMapKeys();
    for (std::size_t i = 0; i < textures.size() && i < keys.size(); ++i) {
        if (!textures[i] || !textures[i]->isValid())
            continue;
        auto const known = textureFiles.find(keys[i]);
        if (known != textureFiles.end())
            return known->second.name;
        auto const uri = koltx::ResolveMap::resolveKeyWithURIFallback(nullptr, keys[i]);
        fs::path const source = uri ? fs::path(uri->getNativePath()) : fs::path();
        std::error_code error;
        if (source.empty() || !fs::is_regular_file(source, error)) {
            warnings += L"Texture " + keys[i] + L" is not a local file and was not copied\n";
            textureFiles.emplace(keys[i], TextureFile{std::string(), fs::path(), false});
            return std::string();
        }
        // wall.png, or wall_1.png when wall.png is another image or a name this output uses.
        bool copy = true;
        std::string const name = FileNames::unique(
            legalFileName(source.filename().string()), [&](std::string const& candidate) {
                fs::path const path = obj.parent_path() / candidate;
                std::error_code absent;
                if (taken.count(candidate) != 0 || candidate == mtl.filename().string())
                    return true;
                if (!fs::exists(path, absent)) {
                    copy = true;
                    return false;
                }
                // The output folder holds this image already (or is where it comes from).
                copy = false;
                return !FileNames::sameFile(path, source) && !FileNames::sameContent(path, source);
            });
        taken.insert(name);
        textureFiles.emplace(keys[i], TextureFile{name, source, copy});
        return name;
    }
    return std::string();
}

std::string ObjWriter::materialLibrary(std::wstring& warnings) {
    std::ostringstream m;
    m << "# gmlcodec " << GMLCODEC_VERSION << "\n";
    for (koltx::Material const* material : materialOrder) {
        m << "\nnewmtl " << materialNames.at(material) << "\n"
          << "Ka" << colour(material->getAmbientColor()) << "\n"
          << "Kd" << colour(material->getDiffuseColor()) << "\n"
          << "Ks" << colour(material->getSpecularColor()) << "\n"
          << "Ke" << colour(material->getEmissiveColor())
          << "\n"
          // Shininess in [0, 1] as in X3D; the OBJ exponent is that times 128, as OpenGL has it.
          << "Ns " << materialNumber(material->getShininess() * 128.0) << "\n"
          << "d " << materialNumber(material->getOpacity()) << "\n";
        std::string const texture = textureFile(*material, warnings);
        if (!texture.empty())
            m << "map_Kd " << texture << "\n";
    }
    return m.str();
}

void ObjWriter::write(std::shared_ptr<koltx::Geometry> const& geometry,
                      GeometrySummary const& summary, std::wstring& warnings) {
    write(geometry ? geometry->getMeshes() : std::vector<std::shared_ptr<koltx::Mesh>>(), summary,
          warnings);
}

void ObjWriter::write(std::vector<std::shared_ptr<koltx::Mesh>> const& meshes,
                      GeometrySummary const& summary, std::wstring& warnings) {
    if (isProtected(obj))
        throw std::runtime_error("cannot write " + obj.string() +
                                 ": the conversion reads that file");
    taken = {obj.filename().string()};
    // Materials are named in the order faces use them, before the OBJ names its library.
    for (auto const& mesh : meshes) {
        auto const& faceMaterials = mesh->getFaceMaterialIndices();
        auto const& materials = mesh->getMaterials();
        for (uint32_t face = 0; face < mesh->getFaceCount(); ++face) {
            uint32_t const index = face < faceMaterials.size() ? faceMaterials[face] : 0;
            if (!mesh->isHoleFace(face) && index < materials.size())
                materialName(materials[index].get());
        }
    }
    std::ostringstream a;
    a << "{\n  \"spatialReference\": "
      << (summary.spatialReference ? Json::quote(*summary.spatialReference) : "null")
      << ",\n  \"attributes\": {";
    for (std::size_t i = 0; i < summary.attributes.size(); ++i)
        a << (i ? "," : "") << "\n    " << Json::quote(summary.attributes[i].first) << ": "
          << summary.attributes[i].second;
    a << (summary.attributes.empty() ? "}" : "\n  }") << "\n}\n";
    std::string const attributesText = a.str();
    attributes = obj.parent_path() / sideName(attributes.filename().string(), attributesText);
    std::string const mtlText = materialLibrary(warnings);
    mtl = obj.parent_path() / sideName(mtl.filename().string(), mtlText);

    AtomicFile objFile(obj);
    std::ostream& out = objFile.stream();
    out << "# gmlcodec " << GMLCODEC_VERSION << "\n"
        << "# axes: x east, y up, z south (the file's x, z, -y)\n"
        << "mtllib " << mtl.filename().string() << "\n";

    std::size_t vertexBase = 1;
    std::size_t uvBase = 1;
    std::size_t meshNumber = 0;
    for (auto const& original : meshes) {
        auto const mesh = koltx::MeshUtils::triangulateHoles(original, &warnings);
        // OBJ reads a backslash at the end of a line as a line continuation (Blender and
        // Assimp do), and every mesh path ends in one. The mesh's number goes behind it: a
        // mesh path ignores whatever follows its last backslash, so the name still reads
        // back as the same path, and object names become unique besides.
        std::string name = objectName(kolt::StringUtils::toUTF8(mesh->getName()));
        ++meshNumber;
        if (!name.empty() && name.back() == '\\')
            name += std::to_string(meshNumber);
        out << "o " << name << "\n";
        auto const& coords = mesh->getVertexCoords();
        for (std::size_t i = 0; i + 2 < coords.size(); i += 3)
            out << "v " << number(coords[i]) << " " << number(coords[i + 1]) << " "
                << number(coords[i + 2]) << "\n";
        auto const& uvs = mesh->getUVCoords(0);
        for (std::size_t i = 0; i + 1 < uvs.size(); i += 2)
            out << "vt " << shortNumber(uvs[i]) << " " << shortNumber(uvs[i + 1]) << "\n";

        std::string current;
        auto const& faceMaterials = mesh->getFaceMaterialIndices();
        auto const& materials = mesh->getMaterials();
        for (uint32_t face = 0; face < mesh->getFaceCount(); ++face) {
            if (mesh->isHoleFace(face))
                continue;
            uint32_t const index = face < faceMaterials.size() ? faceMaterials[face] : 0;
            if (index < materials.size()) {
                std::string const used = materialName(materials[index].get());
                if (used != current) {
                    out << "usemtl " << used << "\n";
                    current = used;
                }
            }
            uint32_t const count = mesh->getFaceVertexCount(face);
            uint32_t const* vertices = mesh->getFaceVertexIndices(face);
            uint32_t const* uvIndices = mesh->getFaceUVIndices(face, 0);
            bool const withUVs = uvIndices != nullptr && mesh->getFaceUVCount(face, 0) == count;
            out << "f";
            for (uint32_t k = 0; k < count; ++k) {
                out << " " << vertexBase + vertices[k];
                if (withUVs)
                    out << "/" << uvBase + uvIndices[k];
            }
            out << "\n";
        }
        vertexBase += mesh->getVertexCount();
        uvBase += uvs.size() / 2;
    }

    // A side file that holds its content already is left as it is.
    std::vector<std::unique_ptr<AtomicFile>> parts;
    for (auto const& [path, text] : {std::pair(attributes, &attributesText), {mtl, &mtlText}}) {
        if (FileNames::holds(path, *text))
            continue;
        parts.push_back(std::make_unique<AtomicFile>(path));
        parts.back()->stream() << *text;
    }
    for (auto const& [key, file] : textureFiles) {
        if (file.name.empty() || !file.copy)
            continue;
        std::ifstream in(file.source, std::ios::binary);
        auto image = std::make_unique<AtomicFile>(obj.parent_path() / file.name);
        image->stream() << in.rdbuf();
        if (!in && !in.eof())
            throw std::runtime_error("cannot read " + file.source.string());
        parts.push_back(std::move(image));
    }
    // Everything is complete; the OBJ appears last, so a reader never finds it before its parts.
    for (auto& part : parts)
        part->commit();
    objFile.commit();
}
