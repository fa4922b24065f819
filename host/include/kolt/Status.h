#pragma once

#include <cstdint>

namespace kolt {

// Status codes reported through out-parameters and koltx::StatusException.
using Status = int32_t;

constexpr Status STATUS_OK = 0;
constexpr Status STATUS_UNSPECIFIED_ERROR = 1;
constexpr Status STATUS_KEY_NOT_FOUND = 2;
constexpr Status STATUS_KEY_TYPE_MISMATCH = 3;
constexpr Status STATUS_ILLEGAL_VALUE = 4;
constexpr Status STATUS_ILLEGAL_KEY = 5;
constexpr Status STATUS_BUFFER_TOO_SMALL = 6;
constexpr Status STATUS_EXTENSION_NOT_FOUND = 7;
constexpr Status STATUS_EXTENSION_LOAD_FAILED = 8;
constexpr Status STATUS_FILE_NOT_FOUND = 9;
constexpr Status STATUS_READ_FAILED = 10;
constexpr Status STATUS_NOT_SUPPORTED = 11;
constexpr Status STATUS_CALLBACKS_UNUSABLE = 27;
constexpr Status STATUS_TEXTURE_INVALID = 30;
constexpr Status STATUS_TEXTURE_NAME_MISSING = 43;

// Human-readable text of a status; never null. Unknown codes get a generic text.
char const* getStatusDescription(Status status);

} // namespace kolt
