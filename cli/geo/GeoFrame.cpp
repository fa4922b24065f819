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

constexpr double FitTolerance = 5e-5; // metres

// Four Chebyshev nodes on [-1, 1] and the inverse of their Vandermonde matrix: the coefficient
// of t^i of the cubic through values f_k at the nodes is the sum over k of inverse[i][k] f_k.
struct Chebyshev {
    double nodes[4];
    double inverse[4][4];
};

Chebyshev const& chebyshev() {
    static Chebyshev const table = [] {
        Chebyshev c{};
        double m[4][8] = {};
        for (int k = 0; k < 4; ++k) {
            c.nodes[k] = std::cos((2 * k + 1) * M_PI / 8);
            for (int i = 0; i < 4; ++i)
                m[k][i] = std::pow(c.nodes[k], i);
            m[k][4 + k] = 1;
        }
        for (int col = 0; col < 4; ++col) { // Gauss-Jordan with partial pivoting
            int pivot = col;
            for (int r = col + 1; r < 4; ++r)
                if (std::abs(m[r][col]) > std::abs(m[pivot][col]))
                    pivot = r;
            std::swap(m[col], m[pivot]);
            double const d = m[col][col];
            for (double& x : m[col])
                x /= d;
            for (int r = 0; r < 4; ++r) {
                double const factor = m[r][col];
                if (r != col)
                    for (int x = 0; x < 8; ++x)
                        m[r][x] -= factor * m[col][x];
            }
        }
        for (int i = 0; i < 4; ++i)
            for (int k = 0; k < 4; ++k)
                c.inverse[i][k] = m[i][4 + k];
        return c;
    }();
    return table;
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
    cubic.reset();
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

void GeoFrame::projToGltf(double const* file, std::size_t count, double* out) const {
    std::vector<double> xyz(file, file + count * 3);
    proj_trans_generic(proj->toEcef, PJ_FWD, xyz.data(), sizeof(double) * 3, count, xyz.data() + 1,
                       sizeof(double) * 3, count, xyz.data() + 2, sizeof(double) * 3, count,
                       nullptr, 0, 0);
    auto const& m = *matrix;
    for (std::size_t i = 0; i < count; ++i, out += 3) {
        double const d[3] = {xyz[i * 3] - originEcef[0], xyz[i * 3 + 1] - originEcef[1],
                             xyz[i * 3 + 2] - originEcef[2]};
        out[0] = m[0] * d[0] + m[1] * d[1] + m[2] * d[2];    // east
        out[1] = m[8] * d[0] + m[9] * d[1] + m[10] * d[2];   // up
        out[2] = -(m[4] * d[0] + m[5] * d[1] + m[6] * d[2]); // south
    }
}

bool GeoFrame::fit(std::array<double, 3> const& low, std::array<double, 3> const& high) {
    cubic.reset();
    if (frameKind != Kind::Enu || proj->toEcef == nullptr || !matrix)
        return false;
    Cubic c;
    for (int a = 0; a < 3; ++a) {
        c.centre[a] = (low[a] + high[a]) / 2;
        c.half[a] = std::max((high[a] - low[a]) / 2, 1e-9);
        if (!std::isfinite(c.centre[a]) || !std::isfinite(c.half[a]) || !(low[a] <= high[a]))
            return false;
    }
    auto const& n = chebyshev();
    std::vector<double> at, values(32 * 3);
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j)
            for (double w : {-1.0, 1.0})
                at.insert(at.end(),
                          {c.centre[0] + c.half[0] * n.nodes[i],
                           c.centre[1] + c.half[1] * n.nodes[j], c.centre[2] + c.half[2] * w});
    projToGltf(at.data(), 32, values.data());
    for (double v : values)
        if (!std::isfinite(v))
            return false;
    for (int o = 0; o < 3; ++o) {
        double ends[2][4][4]; // at w = -1 and w = 1: coefficients of u^i v^j
        for (int w = 0; w < 2; ++w) {
            double g[4][4] = {};
            for (int i = 0; i < 4; ++i)
                for (int l = 0; l < 4; ++l)
                    for (int k = 0; k < 4; ++k)
                        g[i][l] += n.inverse[i][k] * values[((k * 4 + l) * 2 + w) * 3 + o];
            for (int i = 0; i < 4; ++i)
                for (int j = 0; j < 4; ++j) {
                    ends[w][i][j] = 0;
                    for (int l = 0; l < 4; ++l)
                        ends[w][i][j] += g[i][l] * n.inverse[j][l];
                }
        }
        for (int i = 0; i < 4; ++i)
            for (int j = 0; j < 4; ++j) {
                c.terms[o][(i * 4 + j) * 2] = (ends[1][i][j] + ends[0][i][j]) / 2;
                c.terms[o][(i * 4 + j) * 2 + 1] = (ends[1][i][j] - ends[0][i][j]) / 2;
            }
    }
    // Checked between the nodes, on the box's faces and through its middle.
    at.clear();
    for (int i = 0; i <= 5; ++i)
        for (int j = 0; j <= 5; ++j)
            for (double w : {-1.0, 0.0, 1.0})
                at.insert(at.end(),
                          {c.centre[0] + c.half[0] * (i / 2.5 - 1),
                           c.centre[1] + c.half[1] * (j / 2.5 - 1), c.centre[2] + c.half[2] * w});
    std::size_t const checks = at.size() / 3;
    values.resize(checks * 3);
    projToGltf(at.data(), checks, values.data());
    for (std::size_t k = 0; k < checks; ++k) {
        double mine[3];
        evaluate(c, at.data() + k * 3, mine);
        for (int o = 0; o < 3; ++o)
            if (!(std::abs(mine[o] - values[k * 3 + o]) <= FitTolerance))
                return false;
    }
    cubic = c;
    return true;
}

void GeoFrame::evaluate(Cubic const& c, double const* p, double* out) {
    double const u = (p[0] - c.centre[0]) / c.half[0], v = (p[1] - c.centre[1]) / c.half[1],
                 w = (p[2] - c.centre[2]) / c.half[2];
    double const pu[4] = {1, u, u * u, u * u * u}, pv[4] = {1, v, v * v, v * v * v};
    for (int o = 0; o < 3; ++o) {
        double const* t = c.terms[o].data();
        double sum = 0;
        for (int i = 0; i < 4; ++i) {
            double row = 0;
            for (int j = 0; j < 4; ++j, t += 2)
                row += pv[j] * (t[0] + t[1] * w);
            sum += pu[i] * row;
        }
        out[o] = sum;
    }
}

// The same as `evaluate` for two points at once, in the two lanes of one register: each lane
// does the very operations of `evaluate`, so results are equal to the last bit.
void GeoFrame::evaluatePair(Cubic const& c, double const* p, double* out) {
    using Pair = double __attribute__((vector_size(16)));
    Pair const u = (Pair{p[0], p[3]} - c.centre[0]) / c.half[0],
               v = (Pair{p[1], p[4]} - c.centre[1]) / c.half[1],
               w = (Pair{p[2], p[5]} - c.centre[2]) / c.half[2];
    Pair const pu[4] = {Pair{1, 1}, u, u * u, u * u * u}, pv[4] = {Pair{1, 1}, v, v * v, v * v * v};
    for (int o = 0; o < 3; ++o) {
        double const* t = c.terms[o].data();
        Pair sum = {0, 0};
        for (int i = 0; i < 4; ++i) {
            Pair row = {0, 0};
            for (int j = 0; j < 4; ++j, t += 2)
                row += pv[j] * (t[0] + t[1] * w);
            sum += pu[i] * row;
        }
        out[o] = sum[0];
        out[3 + o] = sum[1];
    }
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
    bool inside = cubic.has_value();
    for (std::size_t i = 0; i < count * 3 && inside; i += 3)
        for (int a = 0; a < 3; ++a)
            inside =
                inside && std::abs(file[i + a] - cubic->centre[a]) <= cubic->half[a] * (1 + 1e-9);
    if (inside) {
        std::size_t i = 0;
        for (; i + 1 < count; i += 2, file += 6, out += 6) {
            double xyz[6];
            evaluatePair(*cubic, file, xyz);
            for (int k = 0; k < 6; ++k)
                out[k] = static_cast<float>(xyz[k]);
        }
        for (; i < count; ++i, file += 3, out += 3) {
            double xyz[3];
            evaluate(*cubic, file, xyz);
            out[0] = static_cast<float>(xyz[0]);
            out[1] = static_cast<float>(xyz[1]);
            out[2] = static_cast<float>(xyz[2]);
        }
        return;
    }
    std::vector<double> xyz(count * 3);
    projToGltf(file, count, xyz.data());
    for (std::size_t i = 0; i < count * 3; ++i)
        out[i] = static_cast<float>(xyz[i]);
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
