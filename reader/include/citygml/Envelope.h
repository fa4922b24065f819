#pragma once

#include <citygml/TVec3.h>

#include <string_view>

namespace citygml {

namespace detail {
class Access; // the reader, which fills these fields while it reads a document
}

// gml:boundedBy/gml:Envelope of a feature or the model.
class Envelope {
public:
    Envelope() = default;
    // `srsName` must outlive the envelope.
    Envelope(TVec3d lower, TVec3d upper, std::string_view srsName);

    TVec3d const& getLowerBound() const { return m_lower; }
    TVec3d const& getUpperBound() const { return m_upper; }
    // srsName of the gml:Envelope element. Without one, a feature's envelope takes the first
    // srsName written on a GML element inside the feature, and the model's the first one in the
    // document, so that files naming the reference system only on geometries still have one.
    std::string_view srsName() const { return m_srsName; }
    // True when both corners were read and lower <= upper on every axis.
    bool validBounds() const;

private:
    friend class detail::Access;
    TVec3d m_lower;
    TVec3d m_upper;
    std::string_view m_srsName;
    bool m_hasLower = false;
    bool m_hasUpper = false;
};

} // namespace citygml
