#include "MeshOutputOptions.h"

#include "OptionValue.h"
#include "UsageError.h"

#include <charconv>
#include <cmath>

namespace {

std::array<double, 3> parseOrigin(std::string const& text) {
    std::array<double, 3> out{};
    char const* p = text.data();
    char const* end = text.data() + text.size();
    for (int i = 0; i < 3; ++i) {
        auto const [next, error] = std::from_chars(p, end, out[i]);
        bool const last = i == 2;
        if (error != std::errc() || !std::isfinite(out[i]) ||
            (last ? next != end : (next == end || *next != ',')))
            throw UsageError("option --origin needs three numbers X,Y,Z, not '" + text + "'");
        p = next + 1;
    }
    return out;
}

} // namespace

bool MeshOutputOptions::consume(std::vector<std::string> const& arguments, std::size_t& i) {
    std::string const& arg = arguments[i];
    std::string value;
    if (arg == "--all-lods") {
        allLods = true;
    } else if (arg == "--per-feature") {
        perFeature = true;
    } else if (arg == "--enu") {
        frame.enu = true;
    } else if (takeOptionValue(arguments, i, "--crs", value)) {
        if (value.empty())
            throw UsageError("option --crs needs a CRS");
        frame.crs = value;
    } else if (takeOptionValue(arguments, i, "--origin", value)) {
        frame.origin = parseOrigin(value);
    } else {
        return false;
    }
    return true;
}

std::string MeshOutputOptions::usage() {
    return "Mesh output options (convert to .obj, .glb, .gltf):\n"
           "  --lod N                   per feature, its highest level of detail at or below N\n"
           "                            (default: its highest level)\n"
           "  --all-lods                keep every level of detail\n"
           "Georeferencing (convert to .glb, .gltf):\n"
           "  --crs CRS                 the input's CRS (anything PROJ reads), instead of its own\n"
           "  --origin X,Y,Z            origin in the input CRS (default: centre of the data)\n"
           "  --enu                     east-north-up for a projected CRS too (geographic ones\n"
           "                            always are)\n"
           "  --per-feature             one node per top-level feature instead of one per file\n";
}
