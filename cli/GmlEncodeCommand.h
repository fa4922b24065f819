#pragma once

#include <cstddef>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

class CodecHost;
class EncodeOptions;
class TextureAccess;

namespace koltx {
class ExtensionManager;
class Mesh;
} // namespace koltx

// What a conversion to CityGML knows besides the encoding options.
struct GmlEncodeContext {
    TextureAccess const* textures = nullptr; // the files it read are never written over
    bool verbose = false;                    // every reader warning, not a summary
    std::ostream* diagnostics = nullptr;     // where the reader's warnings go
};

// `gmlcodec convert IN OUT.gml`: reads an OBJ file, or decodes a CityGML file, and writes what
// it holds as one initial shape through the codec's encoder. Texture images land beside OUT.
class GmlEncodeCommand {
public:
    // What one conversion did, for the report and for tests.
    struct Result {
        std::string document;            // path of the written document
        std::vector<std::string> images; // paths of the written texture images
        std::size_t meshes = 0;          // meshes given to the encoder
        std::size_t faces = 0;
        std::size_t renamedMeshes = 0; // names made distinct so that no face is lost
        double vertexPrecision = 0.0;  // the precision the encoder used
        bool precisionChosen = false;  // true when the tool chose it
        int decimals = 0;              // decimals the input's coordinates carry
        // The encoder with its document tree and the meshes it prepared, all committed: freed
        // with the result, or kept by a tool about to exit that has no use for freeing them.
        std::shared_ptr<void> encoded;
    };

    using Context = GmlEncodeContext;

    // Returns the exit code: 0, or 1 after a message on `err` when the conversion failed. A
    // failed conversion leaves none of its files behind.
    static int run(CodecHost const& host, std::string const& input, std::string const& output,
                   EncodeOptions const& options, std::ostream& out, std::ostream& err,
                   Context context = {});

    // The conversion itself, as a pipeline: read the input, repair mesh names, build the
    // options, build the shape, run the encoder, commit the outputs. Throws std::runtime_error
    // with a message for the user.
    static Result convert(koltx::ExtensionManager& manager, std::string const& input,
                          std::string const& output, EncodeOptions const& options,
                          std::wstring& warnings, Context const& context = {});
};
