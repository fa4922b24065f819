#include "koltx/StatusException.h"

namespace koltx {

namespace {

std::string describe(kolt::Status status) {
    std::string text = kolt::getStatusDescription(status);
    if (text == "unknown status")
        text += " " + std::to_string(status);
    return text;
}

} // namespace

StatusException::StatusException(kolt::Status status)
    : std::runtime_error(describe(status)), status(status) {}

StatusException::StatusException(kolt::Status status, std::string const& message)
    : std::runtime_error(message), status(status) {}

StatusException::~StatusException() = default;

} // namespace koltx
