#pragma once

#include <cstddef>
#include <string>
#include <vector>

// "--name value" or "--name=value": true when arguments[i] is the option `name`, with its value
// in `value` and `i` past it. Throws UsageError when the value is missing.
bool takeOptionValue(std::vector<std::string> const& arguments, std::size_t& i,
                     std::string const& name, std::string& value);
