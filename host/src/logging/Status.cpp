#include "kolt/Status.h"

#include "kolt/Callbacks.h"

namespace kolt {

char const* getStatusDescription(Status status) {
    switch (status) {
    case STATUS_OK:
        return "success";
    case STATUS_UNSPECIFIED_ERROR:
        return "unspecified error";
    case STATUS_KEY_NOT_FOUND:
        return "key not found";
    case STATUS_KEY_TYPE_MISMATCH:
        return "key has a value of another type";
    case STATUS_ILLEGAL_VALUE:
        return "illegal value";
    case STATUS_ILLEGAL_KEY:
        return "illegal key";
    case STATUS_BUFFER_TOO_SMALL:
        return "buffer too small";
    case STATUS_EXTENSION_NOT_FOUND:
        return "no extension with this ID";
    case STATUS_EXTENSION_LOAD_FAILED:
        return "extension library could not be loaded";
    case STATUS_FILE_NOT_FOUND:
        return "file not found";
    case STATUS_READ_FAILED:
        return "file could not be read";
    case STATUS_NOT_SUPPORTED:
        return "operation not supported";
    case STATUS_CALLBACKS_UNUSABLE:
        return "callbacks object unusable";
    case STATUS_TEXTURE_INVALID:
        return "texture null or invalid";
    case STATUS_TEXTURE_NAME_MISSING:
        return "texture name missing";
    case SimpleOutputCallbacks::STATUS_EXISTS:
        return "output exists";
    case SimpleOutputCallbacks::STATUS_NAME_REFUSED:
        return "output name refused";
    case SimpleOutputCallbacks::STATUS_BAD_HANDLE:
        return "no open output with this handle";
    case SimpleOutputCallbacks::STATUS_IO:
        return "output could not be written";
    default:
        return "unknown status";
    }
}

} // namespace kolt
