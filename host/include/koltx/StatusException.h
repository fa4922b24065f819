#pragma once

#include "kolt/Status.h"

#include <stdexcept>
#include <string>

namespace koltx {

// An error that the host knows by number; what() is the text of the status.
class StatusException : public std::runtime_error {
public:
    explicit StatusException(kolt::Status status);
    // A status with a more specific text than the generic one, e.g. naming a file.
    StatusException(kolt::Status status, std::string const& message);
    StatusException(StatusException const&) = default;
    StatusException& operator=(StatusException const&) = default;
    ~StatusException() override;

    kolt::Status getStatus() const { return status; }

private:
    kolt::Status status;
};

} // namespace koltx
