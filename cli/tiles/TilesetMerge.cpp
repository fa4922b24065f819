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

// A quadtree over the parts' centres: a node holds up to GroupSize parts, or splits them
// among its quadrants (or, when their centres coincide, into GroupSize runs in name order).
// Inner nodes have no content: their region holds everything below and their error is the
// largest error below, what is missing while none of it is drawn.
constexpr std::size_t GroupSize = 4;
constexpr double LeastError = 0.01; // metres: a tile with children is never exact

Json regionJson(TileFeatures::Region const& r) {
    return Json::array({r[0], r[1], r[2], r[3], r[4], r[5]});
}

Json partTile(Part const& part) {
    return {{"boundingVolume", {{"region", regionJson(part.region)}}},
            {"geometricError", part.error},
            {"content", {{"uri", part.tileset}}}};
}

Json group(std::vector<Part const*> const& items, int depth) {
    TileFeatures::Region region = TileFeatures::empty();
    double error = LeastError;
    for (Part const* p : items) {
        TileFeatures::extend(region, p->region);
        error = std::max(error, p->error);
    }
    Json children = Json::array();
    if (items.size() <= GroupSize || depth >= 30) {
        for (Part const* p : items)
            children.push_back(partTile(*p));
    } else {
        auto const centre = [](Part const* p, int axis) {
            return (p->region[axis] + p->region[axis + 2]) / 2;
        };
        double low[2] = {INFINITY, INFINITY}, high[2] = {-INFINITY, -INFINITY};
        for (Part const* p : items)
            for (int a = 0; a < 2; ++a) {
                low[a] = std::min(low[a], centre(p, a));
                high[a] = std::max(high[a], centre(p, a));
            }
        std::vector<std::vector<Part const*>> groups(GroupSize);
        for (Part const* p : items)
            groups[(centre(p, 0) >= (low[0] + high[0]) / 2 ? 1 : 0) +
                   (centre(p, 1) >= (low[1] + high[1]) / 2 ? 2 : 0)]
                .push_back(p);
        if (std::any_of(groups.begin(), groups.end(),
                        [&](auto const& g) { return g.size() == items.size(); })) {
            groups.assign(GroupSize, {});
            for (std::size_t i = 0; i < items.size(); ++i)
                groups[i * GroupSize / items.size()].push_back(items[i]);
        }
        for (auto const& g : groups) {
            if (g.size() == 1)
                children.push_back(partTile(*g.front()));
            else if (!g.empty())
                children.push_back(group(g, depth + 1));
        }
    }
    return {{"boundingVolume", {{"region", regionJson(region)}}},
            {"geometricError", error},
            {"children", std::move(children)}};
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
    std::vector<Part> found;
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
        found.push_back(std::move(part));
    }
    if (found.empty())
        throw std::runtime_error("no part in " + parts.string() + " holds a feature to tile");
    std::vector<Part const*> items;
    for (auto const& part : found)
        items.push_back(&part);
    Json root = group(items, 0);
    root["refine"] = "ADD";
    Json const tileset = {{"asset", {{"version", "1.1"}, {"generator", "gmlcodec"}}},
                          {"geometricError", root["geometricError"]},
                          {"root", std::move(root)}};
    AtomicFile file(outDir / "tileset.json");
    file.stream() << tileset.dump() << "\n";
    file.commit();
    return totals;
}
