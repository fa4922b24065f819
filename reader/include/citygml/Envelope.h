#pragma once

#include <citygml/TVec3.h>

#include <string>

namespace citygml {

// gml:boundedBy/gml:Envelope of a feature or the model.
class Envelope {
public:
    Envelope() = default;
    Envelope(TVec3d lower, TVec3d upper, std::string srsName);

    TVec3d const& getLowerBound() const { return m_lower; }
    TVec3d const& getUpperBound() const { return m_upper; }
    // srsName of the gml:Envelope element; when it has none, that of the boundedBy property or
    // the first srsName met on a geometry of the same feature.
    std::string const& srsName() const { return m_srsName; }
    // True when both corners were read and lower <= upper on every axis.
    bool validBounds() const;

private:
    friend class ModelBuilder;
    TVec3d m_lower;
    TVec3d m_upper;
    std::string m_srsName;
    bool m_hasLower = false;
    bool m_hasUpper = false;
};

} // namespace citygml
