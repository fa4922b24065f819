// Fuzz entry for the tool's OBJ reader. The bytes are an OBJ file, optionally followed by a line
// "#mtl" and the material library that the OBJ names as "input.mtl"; both are written to a
// scratch folder of the process, since the reader takes a path. Any input gives meshes that keep
// the host's rules or a std::runtime_error.
#include "FuzzCheck.h"
#include "ObjReader.h"

#include <kolt/Cache.h>
#include <koltx/KOLTUtils.h>
#include <koltx/Mesh.h>

#include <cmath>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

// The process's own folder, removed when the process ends.
struct ScratchFolder {
    fs::path path = fs::temp_directory_path() / ("kolt-obj-fuzz-" + std::to_string(getpid()));
    ScratchFolder() { fs::create_directories(path); }
    ~ScratchFolder() {
        std::error_code ignored;
        fs::remove_all(path, ignored);
    }
};

void writeFile(fs::path const& path, std::string const& bytes) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    fuzzCheck(static_cast<bool>(out));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    static ScratchFolder const scratch;
    std::string const bytes(reinterpret_cast<char const*>(data), size);
    std::size_t const split = bytes.find("\n#mtl\n");
    writeFile(scratch.path / "input.obj", bytes.substr(0, split));
    writeFile(scratch.path / "input.mtl",
              split == std::string::npos ? std::string() : bytes.substr(split + 6));

    auto const cache = koltx::KOLTUtils::share(kolt::Cache::create());
    std::wstring warnings;
    try {
        for (auto const& mesh :
             ObjReader::read((scratch.path / "input.obj").string(), cache.get(), warnings)) {
            fuzzCheck(mesh != nullptr);
            for (uint32_t f = 0; f < mesh->getFaceCount(); ++f)
                for (uint32_t i = 0; i < mesh->getFaceVertexCount(f); ++i)
                    fuzzCheck(mesh->getFaceVertexIndices(f)[i] < mesh->getVertexCount());
        }
    } catch (std::runtime_error const&) {
        // A file that is not OBJ is reported this way; anything else escapes and fails the run.
    }
    return 0;
}
