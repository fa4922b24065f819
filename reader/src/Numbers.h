#pragma once

#include <string_view>
#include <vector>

namespace citygml {

// Number reading for coordinate lists, with std::from_chars and no locale.
class Numbers {
public:
    // Appends every whitespace-separated number of `text`; false at the first token that is not
    // a complete number (what was read before stays appended), which `bad` then names.
    static bool parseList(std::string_view text, std::vector<double>& out,
                          std::string_view* bad = nullptr);
    // gml:coordinates: tuples separated by `ts`, values by `cs`, `decimal` as decimal mark.
    // Gives the values flat and the number of values per tuple in `dimension` (0 if they vary).
    static bool parseCoordinates(std::string_view text, char cs, char ts, char decimal,
                                 std::vector<double>& out, int& dimension,
                                 std::string_view* bad = nullptr);
    static bool parseOne(std::string_view token, double& value);
    // Whether a token that failed is a number beyond the range of a double, such as 1e309.
    static bool outOfRange(std::string_view token);
    static std::string_view trim(std::string_view text);
};

} // namespace citygml
