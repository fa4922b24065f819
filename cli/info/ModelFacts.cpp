#include "ModelFacts.h"

#include "Json.h"
#include "geo/GeoFrame.h"
#include "lod/MeshPath.h"

#include <kolt/StringUtils.h>
#include <koltx/Mesh.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <sstream>
#include <unordered_set>

namespace {

// The version is told by the core namespace the document declares near its start.
std::optional<std::string> sniffVersion(std::string const& file) {
    std::ifstream in(file, std::ios::binary);
    std::string head(64 * 1024, '\0');
    in.read(head.data(), static_cast<std::streamsize>(head.size()));
    head.resize(static_cast<std::size_t>(in.gcount()));
    for (char const* v : {"3.0", "2.0", "1.0"}) {
        if (head.find(std::string("http://www.opengis.net/citygml/") + v) != std::string::npos)
            return std::string(v);
    }
    return std::nullopt;
}

} // namespace

ModelFacts::ModelFacts(std::string const& file,
                       std::vector<std::shared_ptr<koltx::Mesh>> const& meshes,
                       std::optional<std::string> const& spatialReference)
    : version(sniffVersion(file)) {
    // Feature keys are views of copies kept in a few large blocks: one allocation per block
    // instead of one per feature, and no per-key free at the end.
    std::vector<std::unique_ptr<char[]>> blocks;
    char* room = nullptr;
    std::size_t left = 0;
    std::unordered_set<std::string_view> features;
    auto isNew = [&](std::string_view key) {
        if (features.count(key) != 0)
            return false;
        if (key.size() > left) {
            left = std::max<std::size_t>(key.size(), 1 << 20);
            blocks.emplace_back(new char[left]);
            room = blocks.back().get();
        }
        std::copy(key.begin(), key.end(), room);
        features.emplace(room, key.size());
        room += key.size();
        left -= key.size();
        return true;
    };
    features.reserve(meshes.size() + 1);
    std::array<double, 6> b{INFINITY, INFINITY, INFINITY, -INFINITY, -INFINITY, -INFINITY};
    // A feature's meshes mostly follow one another: a key equal to the last mesh's is known
    // already, so only new keys reach the set. Strings are reused from mesh to mesh.
    MeshPath path;
    std::string name;
    std::string lastTop;
    std::string lastFeature;
    for (auto const& mesh : meshes) {
        std::wstring const& wide = mesh->getName();
        name.resize(wide.size());
        bool ascii = true;
        for (std::size_t i = 0; i < wide.size() && ascii; ++i) {
            ascii = static_cast<unsigned>(wide[i]) < 0x80;
            name[i] = static_cast<char>(wide[i]);
        }
        if (!ascii)
            name = kolt::StringUtils::toUTF8(wide);
        MeshPath::parse(name, path);
        // Top-level features count even when only their parts carry geometry.
        if (path.topKey != lastTop && isNew(path.topKey))
            ++countOf(std::string_view(path.topKey).substr(0, path.topKey.find('[')));
        if (path.featureKey != lastFeature && isNew(path.featureKey))
            ++countOf(path.featureTag);
        lastTop.swap(path.topKey);
        lastFeature.swap(path.featureKey);
        if (path.lod >= 0)
            lods.insert(path.lod);
        auto const& c = mesh->getVertexCoords();
        for (std::size_t i = 0; i + 2 < c.size(); i += 3) {
            double const p[3] = {c[i], -c[i + 2], c[i + 1]}; // host axes back to the file's
            for (int a = 0; a < 3; ++a) {
                if (std::isfinite(p[a])) {
                    b[a] = std::min(b[a], p[a]);
                    b[a + 3] = std::max(b[a + 3], p[a]);
                }
            }
        }
    }
    if (b[0] <= b[3])
        box = b;
    if (spatialReference)
        crs = GeoFrame::describe(*spatialReference);
}

std::size_t& ModelFacts::countOf(std::string_view tag) {
    auto const hit = featuresByClass.find(tag);
    if (hit != featuresByClass.end())
        return hit->second;
    return featuresByClass.emplace(std::string(tag), 0).first->second;
}

std::string ModelFacts::toText() const {
    std::ostringstream out;
    out.precision(15);
    out << "CityGML version:   " << version.value_or("(unknown)") << "\n"
        << "CRS:               " << (crs ? *crs : std::string("(unknown to PROJ or none)")) << "\n"
        << "levels of detail:  ";
    for (int lod : lods)
        out << lod << (lod == *lods.rbegin() ? "" : ", ");
    out << (lods.empty() ? "(none)\n" : "\n");
    if (box)
        out << "bounding box:      " << (*box)[0] << " " << (*box)[1] << " " << (*box)[2] << " .. "
            << (*box)[3] << " " << (*box)[4] << " " << (*box)[5] << "\n";
    out << "features:          ";
    std::size_t total = 0;
    for (auto const& entry : featuresByClass)
        total += entry.second;
    out << total << "\n";
    for (auto const& [tag, count] : featuresByClass)
        out << "  " << tag << ": " << count << "\n";
    return out.str();
}

std::string ModelFacts::jsonMembers() const {
    std::string out = ", \"version\": " + (version ? Json::quote(*version) : "null");
    out += ", \"crs\": " + (crs ? Json::quote(*crs) : "null") + ", \"featuresByClass\": {";
    bool first = true;
    for (auto const& [tag, count] : featuresByClass) {
        out += (first ? "" : ", ") + Json::quote(tag) + ": " + std::to_string(count);
        first = false;
    }
    out += "}, \"lods\": [";
    first = true;
    for (int lod : lods) {
        out += (first ? "" : ", ") + std::to_string(lod);
        first = false;
    }
    out += "], \"boundingBox\": ";
    if (box) {
        out += "{\"min\": [" + Json::number((*box)[0]) + ", " + Json::number((*box)[1]) + ", " +
               Json::number((*box)[2]) + "], \"max\": [" + Json::number((*box)[3]) + ", " +
               Json::number((*box)[4]) + ", " + Json::number((*box)[5]) + "]}";
    } else {
        out += "null";
    }
    return out;
}
