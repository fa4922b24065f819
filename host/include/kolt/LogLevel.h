#pragma once

#include <cstdint>

namespace kolt {

enum LogLevel : int32_t {
    LOG_TRACE = 0,
    LOG_DEBUG = 1,
    LOG_INFO = 2,
    LOG_WARNING = 3,
    LOG_ERROR = 4,
    LOG_FATAL = 5,
};

} // namespace kolt
