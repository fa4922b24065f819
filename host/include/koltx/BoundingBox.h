#pragma once

#include <vector>

namespace koltx {

// An axis-aligned box. A default box is empty (invalid) until the first point is added.
class BoundingBox {
public:
    BoundingBox();
    BoundingBox(double const* min, double const* max);
    BoundingBox(BoundingBox const&) = default;
    BoundingBox& operator=(BoundingBox const&) = default;
    ~BoundingBox();

    bool isValid() const { return valid; }
    // Three doubles each; (0, 0, 0) for an empty box.
    std::vector<double> const& getMin() const { return min; }
    std::vector<double> const& getMax() const { return max; }
    std::vector<double> getCenter() const;
    std::vector<double> getSize() const;

    void add(double x, double y, double z);
    void add(double const* xyz);
    // Adds every vertex of a flat x, y, z array.
    void addPoints(std::vector<double> const& coords);
    void add(BoundingBox const& other);
    void reset();

private:
    std::vector<double> min;
    std::vector<double> max;
    bool valid = false;
};

} // namespace koltx
