#pragma once

namespace citygml {

// A three-component vector; positions use TVec3<double>, colours TVec3<float>.
template <class T> class TVec3 {
public:
    T x = T();
    T y = T();
    T z = T();

    TVec3() = default;
    TVec3(T x_, T y_, T z_) : x(x_), y(y_), z(z_) {}

    bool operator==(TVec3 const& o) const { return x == o.x && y == o.y && z == o.z; }
    bool operator!=(TVec3 const& o) const { return !(*this == o); }
};

using TVec3f = TVec3<float>;
using TVec3d = TVec3<double>;

} // namespace citygml
