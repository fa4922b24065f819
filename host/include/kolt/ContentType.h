#pragma once

#include <cstdint>

namespace kolt {

enum ContentType : int32_t {
    CT_UNDEFINED = 0,
    CT_GEOMETRY = 1,
    CT_TEXTURE = 2,
};

} // namespace kolt
