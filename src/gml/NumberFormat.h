#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace gml {

// The four text forms of numbers in a document. Each form has its own use and they must not be
// mixed: coordinates keep a fixed number of decimals, colours read like a default stream
// insertion, scalars like "%f", and integers are plain decimals.

// Longest coordinate text: sign, 309 integer digits, point and 10 decimals.
constexpr std::size_t coordinateBufferSize = 321;

// Writes `value` in coordinate form into `buffer` (at least coordinateBufferSize bytes) and
// returns the number of bytes. Throws std::runtime_error when the text does not fit.
std::size_t formatCoordinate(char* buffer, double value, int precision);

std::string coordinateForm(double value, int precision);
std::string streamForm(double value);
std::string scalarForm(double value);
std::string integerForm(std::int64_t value);

// Digits after the decimal point for a vertex precision given as a distance.
int coordinatePrecisionFor(double vertexPrecision);

} // namespace gml
