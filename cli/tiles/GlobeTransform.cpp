#include "GlobeTransform.h"

#include <proj.h>

#include <cmath>
#include <limits>
#include <stdexcept>

struct GlobeTransform::Proj {
    PJ_CONTEXT* context = proj_context_create();
    PJ* toEcef = nullptr;
    PJ* cart = nullptr;

    ~Proj() {
        proj_destroy(cart);
        proj_destroy(toEcef);
        proj_context_destroy(context);
    }
};

GlobeTransform::GlobeTransform(std::string const& crsText) : proj(std::make_unique<Proj>()) {
    proj_log_level(proj->context, PJ_LOG_NONE);
    PJ* crs = proj_create(proj->context, crsText.c_str());
    PJ* ecef = proj_create(proj->context, "EPSG:4978");
    if (crs != nullptr && proj_is_crs(crs) && ecef != nullptr)
        proj->toEcef = proj_create_crs_to_crs_from_pj(proj->context, crs, ecef, nullptr, nullptr);
    proj_destroy(ecef);
    proj_destroy(crs);
    proj->cart = proj_create(proj->context, "+proj=cart +ellps=WGS84");
    if (proj->toEcef == nullptr || proj->cart == nullptr)
        throw std::runtime_error("PROJ cannot place the CRS '" + crsText + "' on the globe");
}

GlobeTransform::~GlobeTransform() = default;

void GlobeTransform::toEcef(double* xyz, std::size_t count) const {
    std::size_t const stride = sizeof(double) * 3;
    proj_trans_generic(proj->toEcef, PJ_FWD, xyz, stride, count, xyz + 1, stride, count, xyz + 2,
                       stride, count, nullptr, 0, 0);
    for (std::size_t i = 0; i < count * 3; ++i) {
        if (!std::isfinite(xyz[i]) || std::abs(xyz[i]) > 1e30)
            xyz[i] = std::numeric_limits<double>::infinity();
    }
}

void GlobeTransform::toGeodetic(double* xyz, std::size_t count) const {
    std::size_t const stride = sizeof(double) * 3;
    proj_trans_generic(proj->cart, PJ_INV, xyz, stride, count, xyz + 1, stride, count, xyz + 2,
                       stride, count, nullptr, 0, 0);
}

std::array<double, 16> GlobeTransform::enuToEcef(std::array<double, 3> const& e, double lon,
                                                 double lat) {
    double const sl = std::sin(lon), cl = std::cos(lon), sp = std::sin(lat), cp = std::cos(lat);
    return {-sl, cl, 0, 0, -sp * cl, -sp * sl, cp, 0, cp * cl, cp * sl, sp, 0, e[0], e[1], e[2], 1};
}
