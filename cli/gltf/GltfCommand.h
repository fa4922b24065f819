#pragma once

#include <iosfwd>

class CodecHost;
class CommandLine;

// `gmlcodec convert IN OUT.glb|OUT.gltf`: CityGML or OBJ to glTF 2.0, with the levels of detail
// the options select, georeferenced with PROJ.
class GltfCommand {
public:
    static int run(CodecHost const& host, CommandLine const& line, std::ostream& out,
                   std::ostream& err);
};
