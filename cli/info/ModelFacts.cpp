#include "ModelFacts.h"

#include "Json.h"
#include "geo/GeoFrame.h"
#include "lod/MeshPath.h"

#include <kolt/StringUtils.h>
#include <koltx/Mesh.h>

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
    std::unordered_set<std::string> features;
    std::array<double, 6> b{INFINITY, INFINITY, INFINITY, -INFINITY, -INFINITY, -INFINITY};
    for (auto const& mesh : meshes) {
        MeshPath const path = MeshPath::parse(mesh->getName());
        // Top-level features count even when only their parts carry geometry.
        if (features.insert(path.topKey).second)
            ++featuresByClass[path.topKey.substr(0, path.topKey.find('['))];
        if (features.insert(path.featureKey).second)
            ++featuresByClass[path.featureTag];
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
