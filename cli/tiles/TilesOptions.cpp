#include "TilesOptions.h"

#include "OptionValue.h"
#include "UsageError.h"

#include <charconv>
#include <thread>

namespace {

uint64_t positive(std::string const& name, std::string const& text, uint64_t limit) {
    uint64_t value = 0;
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || value == 0 || value > limit)
        throw UsageError("option " + name + " needs a whole number from 1 to " +
                         std::to_string(limit) + ", not '" + text + "'");
    return value;
}

} // namespace

bool TilesOptions::consume(std::vector<std::string> const& arguments, std::size_t& i) {
    std::string const& arg = arguments[i];
    std::string value;
    if (arg == "--part") {
        part = true;
    } else if (arg == "--merge") {
        merge = true;
    } else if (takeOptionValue(arguments, i, "--jobs", value) ||
               takeOptionValue(arguments, i, "-j", value)) {
        jobs = static_cast<unsigned>(positive("--jobs", value, 1024));
    } else if (takeOptionValue(arguments, i, "--tile-features", value)) {
        tileFeatures = positive("--tile-features", value, 1000000);
    } else if (takeOptionValue(arguments, i, "--tile-bytes", value)) {
        tileBytes = positive("--tile-bytes", value, 1ull << 40);
    } else if (takeOptionValue(arguments, i, "--to", value)) {
        if (value != "obj" && value != "glb" && value != "gltf" && value != "gml")
            throw UsageError("option --to needs obj, glb, gltf or gml, not '" + value + "'");
        to = value;
    } else {
        return false;
    }
    return true;
}

unsigned TilesOptions::threads() const {
    if (jobs > 0)
        return jobs;
    unsigned const cores = std::thread::hardware_concurrency();
    return cores > 0 ? cores : 1;
}

std::string TilesOptions::usage() {
    return "Many files (tiles, convert DIR OUTDIR):\n"
           "  --jobs N, -j N            files decoded at once (default: the number of cores)\n"
           "  --to obj|glb|gltf|gml     convert DIR OUTDIR: the output format\n"
           "  --part                    tiles --part IN OUTDIR: one file's subtree and index\n"
           "  --merge                   tiles --merge OUTDIR: the root tileset over all parts\n"
           "  --tile-features N         at most N features per tile (default 400)\n"
           "  --tile-bytes N            at most about N bytes of geometry per tile (default 8 "
           "MiB)\n";
}
