#include "GeoFrame.h"

#include "CrsName.h"

#include <kolt/StringUtils.h>

#include <proj.h>

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <vector>

struct GeoFrame::Proj {
    PJ_CONTEXT* context = proj_context_create();
    PJ* crs = nullptr;
    PJ* toEcef = nullptr; // the CRS to EPSG:4978

    ~Proj() {
        proj_destroy(toEcef);
        proj_destroy(crs);
        proj_context_destroy(context);
    }
};

namespace {

// The horizontal part of a compound CRS, or the CRS itself; the caller destroys it.
PJ* horizontalOf(PJ_CONTEXT* context, PJ* crs) {
    if (proj_get_type(crs) == PJ_TYPE_COMPOUND_CRS)
        return proj_crs_get_sub_crs(context, crs, 0);
    return proj_clone(context, crs);
}

// Metres per unit of the first axis.
double axisFactor(PJ_CONTEXT* context, PJ* crs) {
    PJ* cs = proj_crs_get_coordinate_system(context, crs);
    double factor = 1.0;
    if (cs != nullptr && !proj_cs_get_axis_info(context, cs, 0, nullptr, nullptr, nullptr, &factor,
                                                nullptr, nullptr, nullptr))
        factor = 1.0;
    proj_destroy(cs);
    return factor;
}

std::string describeCrs(PJ* crs) {
    std::string out;
    char const* auth = proj_get_id_auth_name(crs, 0);
    char const* code = proj_get_id_code(crs, 0);
    if (auth != nullptr && code != nullptr)
        out = std::string(auth) + ":" + code + " ";
    char const* name = proj_get_name(crs);
    return out + "(" + (name != nullptr ? name : "unnamed") + ")";
}

PJ* createCrs(PJ_CONTEXT* context, std::string const& text) {
    proj_log_level(context, PJ_LOG_NONE);
    PJ* crs = proj_create(context, text.c_str());
    if (crs != nullptr && !proj_is_crs(crs)) {
        proj_destroy(crs);
        crs = nullptr;
    }
    return crs;
}

} // namespace

std::optional<std::string> GeoFrame::describe(std::string const& srsName) {
    auto const text = CrsName::toProj(srsName);
    if (!text)
        return std::nullopt;
    PJ_CONTEXT* context = proj_context_create();
    PJ* crs = createCrs(context, *text);
    std::optional<std::string> out;
    if (crs != nullptr)
        out = describeCrs(crs);
    proj_destroy(crs);
    proj_context_destroy(context);
    return out;
}

GeoFrame::GeoFrame(std::string const& srsName, Options const& options,
                   std::array<double, 3> const& low, std::array<double, 3> const& high,
                   std::wstring& warnings)
    : proj(std::make_unique<Proj>()) {
    for (int i = 0; i < 3; ++i)
        origin[i] = options.origin ? (*options.origin)[i] : (low[i] + high[i]) / 2;
    std::optional<std::string> text = options.crs;
    if (!text && !srsName.empty())
        text = CrsName::toProj(srsName);
    std::string const shown = options.crs ? *options.crs : srsName;
    if (text)
        proj->crs = createCrs(proj->context, *text);
    if (proj->crs == nullptr) {
        if (!shown.empty())
            warnings += L"The spatial reference '" + kolt::StringUtils::toUTF16(shown) +
                        L"' is unknown; the output is only shifted to its origin, not "
                        L"georeferenced.\n";
        crsText = shown;
        return;
    }
    crsText = *text;
    crsName = describeCrs(proj->crs);

    PJ* horizontal = horizontalOf(proj->context, proj->crs);
    PJ_TYPE const type = horizontal != nullptr ? proj_get_type(horizontal) : PJ_TYPE_UNKNOWN;
    bool const geographic = type == PJ_TYPE_GEOGRAPHIC_2D_CRS || type == PJ_TYPE_GEOGRAPHIC_3D_CRS;
    bool const projected = type == PJ_TYPE_PROJECTED_CRS;
    if (projected)
        unitFactor = axisFactor(proj->context, horizontal);
    proj_destroy(horizontal);
    if (!geographic && !projected)
        return; // e.g. an engineering CRS: nothing to put on the globe

    PJ* ecef = proj_create(proj->context, "EPSG:4978");
    proj->toEcef = proj_create_crs_to_crs_from_pj(proj->context, proj->crs, ecef, nullptr, nullptr);
    proj_destroy(ecef);
    frameKind = projected && !options.enu ? Kind::Grid : Kind::Enu;
    if (proj->toEcef == nullptr) {
        if (frameKind == Kind::Enu)
            throw std::runtime_error("PROJ cannot place " + crsName + " on the globe");
        return;
    }
    placeOrigin();
}

GeoFrame::~GeoFrame() = default;

void GeoFrame::placeOrigin() {
    PJ_COORD at = proj_coord(origin[0], origin[1], origin[2], 0);
    PJ_COORD const e = proj_trans(proj->toEcef, PJ_FWD, at);
    if (!std::isfinite(e.xyz.x) || !std::isfinite(e.xyz.y) || !std::isfinite(e.xyz.z)) {
        if (frameKind == Kind::Enu)
            throw std::runtime_error("PROJ cannot place the origin of " + crsName +
                                     " on the globe");
        return;
    }
    originEcef = {e.xyz.x, e.xyz.y, e.xyz.z};
    double const p = std::hypot(e.xyz.x, e.xyz.y);
    double const lon = std::atan2(e.xyz.y, e.xyz.x);
    // Geodetic latitude of the origin on WGS84, so that "up" is the ellipsoid normal.
    PJ* cart = proj_create(proj->context, "+proj=cart +ellps=WGS84");
    PJ_COORD geo = proj_trans(cart, PJ_INV, proj_coord(e.xyz.x, e.xyz.y, e.xyz.z, 0));
    proj_destroy(cart);
    double const lat = std::isfinite(geo.lpz.phi) ? geo.lpz.phi : std::atan2(e.xyz.z, p);
    double const sl = std::sin(lon), cl = std::cos(lon), sp = std::sin(lat), cp = std::cos(lat);
    matrix = std::array<double, 16>{-sl,     cl,      0,  0, -sp * cl, -sp * sl, cp,      0,
                                    cp * cl, cp * sl, sp, 0, e.xyz.x,  e.xyz.y,  e.xyz.z, 1};
}

void GeoFrame::moveOrigin(std::array<double, 3> const& to) {
    if (frameKind != Kind::Enu || proj->toEcef == nullptr)
        throw std::logic_error("only an east-north-up frame moves its origin");
    origin = to;
    placeOrigin();
}

void GeoFrame::toEcef(double* xyz, std::size_t count) const {
    if (proj->toEcef == nullptr) {
        std::fill(xyz, xyz + count * 3, INFINITY);
        return;
    }
    std::size_t const stride = sizeof(double) * 3;
    proj_trans_generic(proj->toEcef, PJ_FWD, xyz, stride, count, xyz + 1, stride, count, xyz + 2,
                       stride, count, nullptr, 0, 0);
}

void GeoFrame::toGltf(double const* file, std::size_t count, float* out) const {
    if (frameKind != Kind::Enu) {
        double const f = unitFactor;
        for (std::size_t i = 0; i < count; ++i, file += 3, out += 3) {
            out[0] = static_cast<float>((file[0] - origin[0]) * f);
            out[1] = static_cast<float>(file[2] - origin[2]);
            out[2] = static_cast<float>(-(file[1] - origin[1]) * f);
        }
        return;
    }
    std::vector<double> xyz(file, file + count * 3);
    proj_trans_generic(proj->toEcef, PJ_FWD, xyz.data(), sizeof(double) * 3, count, xyz.data() + 1,
                       sizeof(double) * 3, count, xyz.data() + 2, sizeof(double) * 3, count,
                       nullptr, 0, 0);
    auto const& m = *matrix;
    for (std::size_t i = 0; i < count; ++i, out += 3) {
        double const d[3] = {xyz[i * 3] - originEcef[0], xyz[i * 3 + 1] - originEcef[1],
                             xyz[i * 3 + 2] - originEcef[2]};
        double const east = m[0] * d[0] + m[1] * d[1] + m[2] * d[2];
        double const north = m[4] * d[0] + m[5] * d[1] + m[6] * d[2];
        double const up = m[8] * d[0] + m[9] * d[1] + m[10] * d[2];
        out[0] = static_cast<float>(east);
        out[1] = static_cast<float>(up);
        out[2] = static_cast<float>(-north);
    }
}

nlohmann::ordered_json GeoFrame::extras() const {
    nlohmann::ordered_json out;
    out["crs"] = crsText.empty() ? nlohmann::ordered_json() : nlohmann::ordered_json(crsText);
    out["crsName"] = crsName.empty() ? nlohmann::ordered_json() : nlohmann::ordered_json(crsName);
    out["origin"] = origin;
    out["frame"] = frameKind == Kind::Enu    ? "east-north-up"
                   : frameKind == Kind::Grid ? "grid, shifted"
                                             : "shifted";
    out["enuToEcef"] = matrix ? nlohmann::ordered_json(*matrix) : nlohmann::ordered_json();
    return out;
}
