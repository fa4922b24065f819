#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

class GeometrySummary;
namespace koltx {
class Geometry;
class Material;
class Mesh;
class Texture;
} // namespace koltx

// Writes a decoded geometry as Wavefront OBJ: one "o" per mesh named by its mesh path, faces
// with holes triangulated, texture coordinates, "usemtl" per material. Beside the OBJ go the
// ".mtl", copies of the texture images and "<stem>.attributes.json". OBJ gets the host's
// coordinates: y is up, z points to the file's negative y. A side file never replaces a file
// that holds something else: it takes a unique name ("wall_1.png", "house_1.mtl") instead.
class ObjWriter {
public:
    explicit ObjWriter(std::filesystem::path objPath);

    // Writes everything or nothing; throws std::runtime_error naming the file that failed.
    // Problems that don't stop the output (a face that cannot be triangulated, a texture that
    // cannot be copied) are appended to `warnings`.
    void write(std::shared_ptr<koltx::Geometry> const& geometry, GeometrySummary const& summary,
               std::wstring& warnings);
    // The same for a chosen set of meshes.
    void write(std::vector<std::shared_ptr<koltx::Mesh>> const& meshes,
               GeometrySummary const& summary, std::wstring& warnings);

    // A file this conversion read: no output may replace it.
    void protect(std::filesystem::path const& file);

    std::filesystem::path const& mtlPath() const { return mtl; }
    std::filesystem::path const& attributesPath() const { return attributes; }

private:
    struct TextureFile {
        std::string name;
        std::filesystem::path source;
        bool copy = false; // false when the output folder holds the same image already
    };

    std::string materialName(koltx::Material const* material);
    std::string textureFile(koltx::Material const& material, std::wstring& warnings);
    // A free name for a side file that is to hold `content`, starting from `name`: one not
    // taken in this output, and either absent or holding `content` already.
    std::string sideName(std::string const& name, std::string const& content);
    bool isProtected(std::filesystem::path const& file) const;
    std::string materialLibrary(std::wstring& warnings);

    std::filesystem::path obj;
    std::filesystem::path mtl;
    std::filesystem::path attributes;
    std::map<koltx::Material const*, std::string> materialNames;
    std::vector<koltx::Material const*> materialOrder;
    std::map<std::wstring, TextureFile> textureFiles; // by source key
    std::vector<std::filesystem::path> protectedFiles;
    std::set<std::string> taken; // names used by this output
};
