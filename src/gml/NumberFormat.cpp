#include "gml/NumberFormat.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
#include <stdexcept>

namespace gml {

namespace {

constexpr char kConversionFailed[] = "Failed to convert coordinate to string.";

// Non-finite values get fixed texts that do not depend on the C++ library in use.
std::size_t writeNonFinite(char* out, double value) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    bool const negative = (bits >> 63) != 0;
    const std::uint64_t mantissa = bits & 0xFFFFFFFFFFFFFull;
    bool const quiet = (mantissa & 0x8000000000000ull) != 0;
    char const* text = nullptr;
    if (mantissa == 0)
        text = "inf";
    else if (negative && mantissa == 0x8000000000000ull)
        text = "nan(ind)";
    else if (quiet)
        text = "nan";
    else
        text = "nan(snan)";
    std::size_t length = 0;
    if (negative)
        out[length++] = '-';
    const std::size_t textLength = std::strlen(text);
    std::memcpy(out + length, text, textLength);
    return length + textLength;
}

} // namespace

std::size_t formatCoordinate(char* buffer, double value, int precision) {
    if (precision >= 1000000000)
        throw std::runtime_error(kConversionFailed);
    if (precision < 0)
        precision = 6;
    if (!std::isfinite(value))
        return writeNonFinite(buffer, value);
    auto const result = std::to_chars(buffer, buffer + coordinateBufferSize, value,
                                      std::chars_format::fixed, precision);
    if (result.ec != std::errc())
        throw std::runtime_error(kConversionFailed);
    return static_cast<std::size_t>(result.ptr - buffer);
}

std::string coordinateForm(double value, int precision) {
    char buffer[coordinateBufferSize];
    return std::string(buffer, formatCoordinate(buffer, value, precision));
}

std::string streamForm(double value) {
    // The general notation with 6 significant digits is what a default stream insertion
    // gives; to_chars is used so that no locale can change the decimal point.
    char buffer[64];
    auto const result =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, 6);
    return std::string(buffer, result.ptr);
}

std::string scalarForm(double value) {
    char buffer[400];
    if (!std::isfinite(value)) {
        int const length = std::snprintf(buffer, sizeof buffer, "%f", value);
        return std::string(buffer, static_cast<std::size_t>(length));
    }
    auto const result =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, 6);
    return std::string(buffer, result.ptr);
}

std::string integerForm(std::int64_t value) {
    char buffer[24];
    auto const result = std::to_chars(buffer, buffer + sizeof buffer, value);
    return std::string(buffer, result.ptr);
}

int coordinatePrecisionFor(double vertexPrecision) {
    double const digits = std::ceil(std::fabs(std::log10(vertexPrecision)) - 1e-8);
    // Converting NaN or a value beyond int to int is undefined. Validated options never hold
    // such a precision (the host refuses values that are not finite, the range is clamped); a
    // stray NaN still gets the default's 3 decimals and a huge value the largest int.
    if (std::isnan(digits))
        return 3;
    return static_cast<int>(std::min(digits, double(std::numeric_limits<int>::max())));
}

} // namespace gml
