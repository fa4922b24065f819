#pragma once

namespace citygml {

// A two-component vector; texture coordinates use TVec2<float>.
template <class T> class TVec2 {
public:
    T x = T();
    T y = T();

    TVec2() = default;
    TVec2(T x_, T y_) : x(x_), y(y_) {}

    bool operator==(TVec2 const& o) const { return x == o.x && y == o.y; }
    bool operator!=(TVec2 const& o) const { return !(*this == o); }
};

using TVec2f = TVec2<float>;
using TVec2d = TVec2<double>;

} // namespace citygml
