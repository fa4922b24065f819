#include "TilesetMerge.h"

#include "AtomicFile.h"
#include "TileFeatures.h"
#include "TilePart.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <ostream>
#include <stdexcept>

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;

namespace {

struct Part {
    std::string tileset;
    TileFeatures::Region region{};
    double error = 0;
    uint64_t features = 0, tiles = 0, bytes = 0;
};

double number(Json const& value, char const* what) {
    if (!value.is_number() || !std::isfinite(value.get<double>()))
        throw std::runtime_error(std::string("'") + what + "' is not a finite number");
    return value.get<double>();
}

uint64_t count(Json const& index, char const* what) {
    if (!index.contains(what) || !index[what].is_number_unsigned())
        throw std::runtime_error(std::string("'") + what + "' is not a count");
    return index[what].get<uint64_t>();
}

// An index is input like any file: every value the root tileset takes from it is checked.
Part read(fs::path const& file, std::string const& name) {
    std::ifstream in(file, std::ios::binary);
    if (!in)
        throw std::runtime_error("cannot be read");
    Json const index = Json::parse(in, nullptr, false);
    if (!index.is_object())
        throw std::runtime_error("is not a JSON object");
    Part part;
    part.features = count(index, "features");
    if (part.features == 0)
        return part;
    part.tiles = count(index, "tiles");
    part.bytes = count(index, "bytes");
    part.error = number(index.value("geometricError", Json()), "geometricError");
    Json const& region = index.value("region", Json());
    if (!region.is_array() || region.size() != 6)
        throw std::runtime_error("'region' is not six numbers");
    for (int i = 0; i < 6; ++i)
        part.region[i] = number(region[i], "region");
    if (part.region[0] < -M_PI || part.region[2] > M_PI || part.region[1] < -M_PI / 2 ||
        part.region[3] > M_PI / 2 || part.region[1] > part.region[3] ||
        part.region[4] > part.region[5] || part.error < 0)
        throw std::runtime_error("'region' or 'geometricError' is out of range");
    part.tileset = std::string(TilePart::PartsFolder) + "/" + name + "/tileset.json";
    if (index.value("tileset", Json()) != part.tileset)
        throw std::runtime_error("'tileset' is not " + part.tileset);
    if (!fs::is_regular_file(fs::path(file).parent_path() / "tileset.json"))
        throw std::runtime_error("its tileset.json is missing");
    return part;
}

} // namespace

TilesetMerge::Totals TilesetMerge::run(fs::path const& outDir, std::vector<std::string> const& only,
                                       std::ostream& err, bool& anyBad) {
    std::vector<std::string> names = only;
    fs::path const parts = outDir / TilePart::PartsFolder;
    if (names.empty()) {
        std::error_code error;
        for (fs::directory_iterator it(parts, error), end; !error && it != end;
             it.increment(error)) {
            std::string const name = it->path().filename().string();
            if (name.rfind('.', 0) != 0 && it->is_directory())
                names.push_back(name);
        }
        if (error)
            throw std::runtime_error("cannot list " + parts.string() + ": " + error.message());
    }
    std::sort(names.begin(), names.end());
    Totals totals;
    Json children = Json::array();
    TileFeatures::Region all = TileFeatures::empty();
    double error = 0;
    for (auto const& name : names) {
        fs::path const index = parts / name / TilePart::IndexName;
        Part part;
        try {
            part = read(index, name);
        } catch (std::exception const& e) {
            err << index.string() << ": " << e.what() << "; the part is left out\n";
            anyBad = true;
            continue;
        }
        totals.features += part.features;
        if (part.features == 0)
            continue;
        ++totals.parts;
        totals.tiles += part.tiles;
        totals.bytes += part.bytes;
        TileFeatures::extend(all, part.region);
        error = std::max(error, part.error);
        children.push_back(
            {{"boundingVolume",
              {{"region", Json::array({part.region[0], part.region[1], part.region[2],
                                       part.region[3], part.region[4], part.region[5]})}}},
             {"geometricError", part.error},
             {"content", {{"uri", part.tileset}}}});
    }
    if (children.empty())
        throw std::runtime_error("no part in " + parts.string() + " holds a feature to tile");
    Json const tileset = {
        {"asset", {{"version", "1.1"}, {"generator", "gmlcodec"}}},
        {"geometricError", error},
        {"root",
         {{"boundingVolume",
           {{"region", Json::array({all[0], all[1], all[2], all[3], all[4], all[5]})}}},
          {"geometricError", error},
          {"refine", "ADD"},
          {"children", std::move(children)}}}};
    AtomicFile file(outDir / "tileset.json");
    file.stream() << tileset.dump() << "\n";
    file.commit();
    return totals;
}
