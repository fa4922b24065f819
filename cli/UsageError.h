#pragma once

#include <stdexcept>

// A command line the tool cannot act on; the tool prints it with a hint and exits with 2.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};
