#include "OptionValue.h"

#include "UsageError.h"

bool takeOptionValue(std::vector<std::string> const& arguments, std::size_t& i,
                     std::string const& name, std::string& value) {
    std::string const& arg = arguments[i];
    if (arg == name) {
        if (i + 1 >= arguments.size())
            throw UsageError("option " + name + " needs a value");
        value = arguments[++i];
        return true;
    }
    if (arg.size() > name.size() && arg.compare(0, name.size(), name) == 0 &&
        arg[name.size()] == '=') {
        value = arg.substr(name.size() + 1);
        return true;
    }
    return false;
}
